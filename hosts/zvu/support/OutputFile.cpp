// The file that a command writes, over C's files: a std::ofstream does not tell why a write failed, and makes a system
// call of each of the library's blocks.
#include "OutputFile.h"

#include "../System.h"
#include "Interrupt.h"

#include "ZevrinUtils/Generators.h"

#include <cerrno>

namespace
{
constexpr std::size_t nFileBuffer = 0x10000;
constexpr int nMostLinks = 40;   // as many as Linux follows

std::error_code LastError()
{
    return {errno, std::generic_category()};
}

// The path of the file that is meant: a link is followed, even to a place where nothing is yet.
std::filesystem::path BehindLinks(std::filesystem::path oPath)
{
    std::error_code oIgnored;
    for (int nLink = 0; nLink < nMostLinks && is_symlink(oPath, oIgnored); ++nLink)
        oPath = oPath.parent_path() / read_symlink(oPath, oIgnored);
    return oPath;
}
}

OutputFile::~OutputFile()
{
    Close();
    if (IsBeside())
    {
        std::error_code oIgnored;
        permissions(m_oWritten, std::filesystem::perms::owner_write, std::filesystem::perm_options::add, oIgnored);
        remove(m_oWritten, oIgnored);   // Windows removes no file that is read-only
    }
    RemoveAtInterrupt(nullptr, nullptr);
}

void OutputFile::Open()
{
    std::error_code oError;
    m_oPlace = m_oWritten = BehindLinks(m_strFile);
    const auto oStatus = status(m_oPlace, oError);
    if (oStatus.type() == std::filesystem::file_type::none)
    {
        Note(oError);
        return;
    }
    if (!exists(oStatus) || is_regular_file(oStatus))
    {
        m_oWritten += "." + CSGuid::CreateGUID().substr(0, 8) + ".part";
        RemoveAtInterrupt(&m_oWritten, nullptr);
    }
    m_pFile = OpenForWriting(m_oWritten);
    if (!m_pFile)
    {
        Note(LastError());
        return;
    }
    std::setvbuf(m_pFile, nullptr, _IOFBF, nFileBuffer);
    if (!IsBeside())
        return;
    RemoveAtInterrupt(&m_oWritten, m_pFile);
    oError.clear();
    if (exists(oStatus))   // from the first byte on, since the file may be private
        permissions(m_oWritten, oStatus.permissions(), oError);
    Note(oError);
}

bool OutputFile::Complete()
{
    if (!Close() || !m_strFault.empty())
        return false;
    if (!IsBeside())
        return true;
    std::error_code oError;
    rename(m_oWritten, m_oPlace, oError);
    if (!Note(oError))
        return false;
    RemoveAtInterrupt(nullptr, nullptr);
    m_oWritten = m_oPlace;
    return true;
}

OutputFile::int_type OutputFile::overflow(int_type nByte)
{
    if (traits_type::eq_int_type(nByte, traits_type::eof()))
        return traits_type::not_eof(nByte);
    const char chByte = traits_type::to_char_type(nByte);
    return xsputn(&chByte, 1) == 1 ? nByte : traits_type::eof();
}

bool OutputFile::Note(const std::error_code& oError)
{
    if (oError && m_strFault.empty())
        m_strFault = m_strFile + " cannot be written: " + oError.message();
    return !oError;
}

bool OutputFile::Close()
{
    if (!m_pFile)
        return true;
    if (IsBeside())
        RemoveAtInterrupt(&m_oWritten, nullptr);
    return std::fclose(std::exchange(m_pFile, nullptr)) == 0 || Note(LastError());
}

std::streamsize OutputFile::xsputn(const char* pchBytes, std::streamsize nBytes)
{
    if (!m_pFile || !m_strFault.empty())
        return 0;
    const auto nWanted = static_cast<std::size_t>(nBytes);
    const std::size_t nWritten = std::fwrite(pchBytes, 1, nWanted, m_pFile);
    if (nWritten < nWanted)
        Note(LastError());
    return static_cast<std::streamsize>(nWritten);
}
