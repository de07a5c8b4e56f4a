// A folder of the test's own, with a blank in its name, gone with the object.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

class ScratchFolder
{
public:
    explicit ScratchFolder(const std::filesystem::path& oWhere = std::filesystem::temp_directory_path())
        : m_oPath(oWhere / ("zevrin test " + std::to_string(std::random_device()())))
    {
        std::filesystem::create_directory(m_oPath);
    }
    ~ScratchFolder()
    {
        std::error_code oIgnored;
        std::filesystem::remove_all(m_oPath, oIgnored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    // The path of what is in it, with backslashes, which every target takes.
    std::string operator/(const std::string& strName) const { return m_oPath.string() + '\\' + strName; }

    static void Write(const std::string& strPath, const std::string& strBytes)
    {
        std::ofstream(Native(strPath), std::ios::binary) << strBytes;
    }
    static std::string Read(const std::string& strPath)
    {
        std::ifstream oFile(Native(strPath), std::ios::binary);
        return {std::istreambuf_iterator(oFile), {}};
    }

    // For calls that take no backslashes.
    static std::filesystem::path Native(std::string strPath)
    {
        for (auto& ch : strPath)
            ch = ch == '\\' ? '/' : ch;
        return strPath;
    }

    // A place for many files: in memory, where the system has one.
    static std::filesystem::path InMemory()
    {
        return std::filesystem::exists("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path();
    }

private:
    std::filesystem::path m_oPath;
};
