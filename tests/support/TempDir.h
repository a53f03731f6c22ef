// A temporary folder for tests that need real files, removed with everything in it.
#pragma once

#include <zlib.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace NQRN20 {

class TTempDir {
public:
    TTempDir() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "xmlparser-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("mkdtemp failed");
        }
        m_path = pattern;
    }
    ~TTempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TTempDir(const TTempDir&) = delete;
    TTempDir& operator=(const TTempDir&) = delete;

    std::string Path(const std::string& name) const { return (m_path / name).string(); }

    // Writes the bytes as they are and returns the file's path.
    std::string Write(const std::string& name, const std::string& content) const {
        std::ofstream(Path(name), std::ios::binary) << content;
        return Path(name);
    }

    // Writes the content as one gzip member with zlib and returns the file's path.
    std::string WriteGzip(const std::string& name, const std::string& content) const {
        gzFile file = gzopen(Path(name).c_str(), "wb");
        if (file == nullptr ||
            (!content.empty() && gzwrite(file, content.data(), unsigned(content.size())) <= 0) ||
            gzclose(file) != Z_OK) {
            throw std::runtime_error("gzip write failed");
        }
        return Path(name);
    }

private:
    std::filesystem::path m_path;
};

} // namespace NQRN20
