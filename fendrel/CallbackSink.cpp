// A sink of the host's own. No lock is held over its call, because the host may take its own locks there; so it runs in
// several threads at once.
#include "fendrel/Sink.h"

namespace
{
class CallbackSink final : public Sink
{
public:
    CallbackSink(CSTrace::Callback pCallback, void* pContext) noexcept : m_pCallback(pCallback), m_pContext(pContext) {}

    void Write(const CSTrace::Record& oRecord) override { m_pCallback(oRecord, m_pContext); }

private:
    const CSTrace::Callback m_pCallback;
    void* const m_pContext;
};
}

std::shared_ptr<Sink> MakeCallbackSink(CSTrace::Callback pCallback, void* pContext)
{
    return pCallback ? std::make_shared<CallbackSink>(pCallback, pContext) : nullptr;
}
