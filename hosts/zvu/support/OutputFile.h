// A file that a command writes: its old content stays until the new one is complete. A download that breaks off must
// not cost the user what was there.
#pragma once

#include <cstdio>
#include <filesystem>
#include <streambuf>
#include <string>
#include <system_error>
#include <utility>

// A buffer for a std::ostream. The bytes are gathered in a file beside it, which is removed unless Complete puts it in
// the file's place. A device, or anything else that is no ordinary file, takes the bytes itself.
class OutputFile : public std::streambuf
{
public:
    explicit OutputFile(std::string strFile) : m_strFile(std::move(strFile)) {}
    ~OutputFile() override;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Nothing is touched before this call. Its failure is told by the next write and by Complete.
    void Open();

    // Puts the bytes in the file's place; false if that fails, or anything failed before.
    bool Complete();

    // The first failure, with the file's name; empty if there is none.
    const std::string& Fault() const { return m_strFault; }

protected:
    int_type overflow(int_type nByte) override;
    std::streamsize xsputn(const char* pchBytes, std::streamsize nBytes) override;

private:
    // Keeps the first error as the fault. False if this is an error.
    bool Note(const std::error_code& oError);
    bool Close();
    bool IsBeside() const { return m_oWritten != m_oPlace; }

    std::string m_strFile;              // as the user named it
    std::filesystem::path m_oPlace;     // where its links lead
    std::filesystem::path m_oWritten;   // where the bytes go; empty before Open
    std::string m_strFault;
    std::FILE* m_pFile = nullptr;
};
