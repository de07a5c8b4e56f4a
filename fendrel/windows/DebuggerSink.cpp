// Lines to the debugger that is attached, through the system's channel for its texts.
#include "fendrel/LineSink.h"

#include <spdlog/sinks/msvc_sink.h>

std::shared_ptr<Sink> MakeDebuggerSink()
{
    return std::make_shared<LineSink>(std::make_unique<spdlog::sinks::msvc_sink_st>());
}
