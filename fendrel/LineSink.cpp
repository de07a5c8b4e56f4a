// A line for each record, written and flushed under one lock: lines of several threads do not mix, and a program that
// dies has its last lines in the file.
#include "fendrel/LineSink.h"

#include "util/Translation.h"

#include <mutex>

#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>

namespace
{
constexpr Translation<int, spdlog::level::level_enum> s_aLevels[] = {
    {CSTrace::eDebug, spdlog::level::debug},
    {CSTrace::eInformation, spdlog::level::info},
    {CSTrace::eWarning, spdlog::level::warn},
};

// Texts hold what hosts were asked, untested: a line feed in it must not begin a line of the log.
std::string OnOneLine(const char* pszText)
{
    std::string strLine;
    for (const char* p = pszText; *p; ++p)
    {
        if (static_cast<unsigned char>(*p) < ' ')
            fmt::format_to(std::back_inserter(strLine), "\\x{:02x}", static_cast<unsigned>(*p));
        else
            strLine += *p;
    }
    return strLine;
}
}

LineSink::LineSink(std::unique_ptr<spdlog::sinks::sink> pWriter) : m_pWriter(std::move(pWriter))
{
    m_pWriter->set_pattern("%Y-%m-%d %H:%M:%S.%e %6t %-7l %v");
}

void LineSink::Write(const CSTrace::Record& oRecord)
{
    spdlog::memory_buf_t oLine;
    fmt::format_to(std::back_inserter(oLine), "[{}] {} ({}:{}) {}", oRecord.pszClass, oRecord.pszMethod,
                   oRecord.pszFile, oRecord.nLine, OnOneLine(oRecord.pszText));
    const spdlog::details::log_msg oMessage("", Translate(s_aLevels, oRecord.eSeverity, spdlog::level::err),
                                            spdlog::string_view_t(oLine.data(), oLine.size()));
    const std::lock_guard oHold(m_oLock);
    m_pWriter->log(oMessage);
    m_pWriter->flush();
}

std::shared_ptr<Sink> MakeStandardErrorSink()
{
    return std::make_shared<LineSink>(std::make_unique<spdlog::sinks::stderr_sink_st>());
}

std::shared_ptr<Sink> MakeFileSink(const char* pszPath)
{
    if (!pszPath)
        return nullptr;
    return std::make_shared<LineSink>(std::make_unique<spdlog::sinks::basic_file_sink_st>(pszPath));
}
