/// @file
/// Fendrel: the trace service of a process.
///
/// Libraries send it finished records; the host program decides which of them are wanted and where they
/// go. Nothing is written until a host chooses a sink:
///
///     CSTrace::instance()->SetThreshold(CSTrace::eDebug);
///     if (!CSTrace::instance()->TraceToFile("resolver.log")) ...
///
/// Threads: every operation may be called from any thread at any time, also while the process ends. A
/// record that another thread is sending while the sink is changed may still go to the sink that was.
#pragma once

#if !defined(_WIN32)
#define FENDREL_API __attribute__((visibility("default")))   ///< what this library exports
#elif defined(FENDREL_BUILDING)
#define FENDREL_API __declspec(dllexport)
#else
#define FENDREL_API __declspec(dllimport)
#endif

/// The trace service: takes records, and gives those that are wanted to the sink in force.
class FENDREL_API CSTrace
{
public:
    /// The weight of a record, and the threshold up to which records pass.
    enum eTraceSeverity
    {
        eNothing = 0,       ///< as a threshold only: no record passes
        eError = 1,         ///< something is not done
        eWarning = 2,       ///< something has no result
        eInformation = 3,   ///< something has come out
        eDebug = 4          ///< also every entry to and exit from a traced method
    };

    /// A finished record. The texts are borrowed for the duration of the call and are never null.
    struct Record
    {
        eTraceSeverity eSeverity;   ///< as the traced method says
        const char* pszText;        ///< the message
        const char* pszClass;       ///< empty in exit records
        const char* pszMethod;      ///< qualified by the class
        const char* pszFile;        ///< as the build names the source file
        int nLine;                  ///< 0 in exit records
    };

    /// Runs on the thread that traces, and so in several threads at once. No lock of the service is held, but
    /// the library that traces may hold locks of its own (the resolver does): a callback takes no lock under
    /// which the host calls that library, and does not call it. The context is the one that was passed with
    /// it. An exception that leaves it is dropped together with the record.
    typedef void (*Callback)(const Record& oRecord, void* pContext);

    /// The trace service of the process; never null.
    static CSTrace* instance() noexcept;

    /// Takes one record. A null text counts as empty. Never fails: a record that cannot be written, such
    /// as on a full disk, is lost.
    void Trace(eTraceSeverity eSeverity, const char* pszText, const char* pszClass, const char* pszMethod,
               const char* pszFile, int nLine) noexcept;

    /// Records up to this severity pass; at first those up to eWarning.
    void SetThreshold(eTraceSeverity eMost) noexcept;
    eTraceSeverity GetThreshold() const noexcept;   ///< what SetThreshold was given

    /// Each of these replaces the sink in force. One that returns false leaves it as it was.

    /// Drops every record: the state at the start. A host whose callback or context goes away, such as at
    /// the end of main, calls it first.
    void TraceToNothing() noexcept;

    /// A line for each record.
    bool TraceToStandardError() noexcept;

    /// A line for each record, appended to the file and flushed at once. A missing file and its folder are
    /// made; false if that fails.
    bool TraceToFile(const char* pszPath) noexcept;

    /// A line for each record, to an attached debugger. False on a platform without such a channel (Linux).
    bool TraceToDebugger() noexcept;

    /// A call of the host's for each record. False for a null callback, or when memory runs out.
    bool TraceToCallback(Callback pCallback, void* pContext) noexcept;

private:
    constexpr CSTrace() noexcept = default;
};
