// A destination of trace records: the host chooses one, and the service gives it each record that is wanted.
#pragma once

#include "Fendrel/Trace.h"

#include <memory>

class Sink
{
public:
    virtual ~Sink() = default;
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;

    // Safe from several threads at once. An exception means that the record is lost.
    virtual void Write(const CSTrace::Record& oRecord) = 0;

protected:
    Sink() = default;
};

// Each gives a sink or, where it cannot, null or an exception.
std::shared_ptr<Sink> MakeStandardErrorSink();
std::shared_ptr<Sink> MakeFileSink(const char* pszPath);
std::shared_ptr<Sink> MakeDebuggerSink();
std::shared_ptr<Sink> MakeCallbackSink(CSTrace::Callback pCallback, void* pContext);
