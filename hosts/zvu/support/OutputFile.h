// A file that a command writes: its old content stays until the new one is complete. A download that breaks off must
// not cost the user what was there.
#pragma once

#include <cstdio>
#include <streambuf>
#include <string>
#include <system_error>
#include <utility>

// A buffer for a std::ostream. The bytes are gathered beside the file under a name of its own, which goes again unless
// they are put in the file's place. A device, or whatever else is no ordinary file, takes them itself.
class OutputFile : public std::streambuf
{
public:
    explicit OutputFile(std::string strFile) : m_strFile(std::move(strFile)) {}
    ~OutputFile() override;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Before it nothing is touched. A failure shows as one of the first write, and in Fault.
    void Open();

    // Puts the bytes in the file's place; false if that fails, or anything failed before.
    bool Complete();

    // What went wrong first, with the file's name; empty if nothing did.
    const std::string& Fault() const { return m_strFault; }

protected:
    int_type overflow(int_type nByte) override;
    std::streamsize xsputn(const char* pchBytes, std::streamsize nBytes) override;

private:
    // Keeps the first error that is one. True if this is none.
    bool Note(const std::error_code& oError);
    bool Close();
    bool IsBeside() const { return m_strWritten != m_strPlace; }

    std::string m_strFile;      // as the user named it
    std::string m_strPlace;     // where its links lead
    std::string m_strWritten;   // where the bytes go; empty before Open
    std::string m_strFault;
    std::FILE* m_pFile = nullptr;
};
