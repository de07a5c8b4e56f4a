// A sink that writes one line for each record, through one of spdlog's.
#pragma once

#include "fendrel/Lock.h"
#include "fendrel/Sink.h"

#include <spdlog/sinks/sink.h>

class LineSink final : public Sink
{
public:
    explicit LineSink(std::unique_ptr<spdlog::sinks::sink> pWriter);

    void Write(const CSTrace::Record& oRecord) override;

private:
    Lock m_oLock;   // the writers are spdlog's forms without a lock of their own
    const std::unique_ptr<spdlog::sinks::sink> m_pWriter;
};
