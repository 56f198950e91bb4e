// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "picture/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "picture/PictureError.h"

namespace qxdraw {

namespace {

[[noreturn]] void fail(const char* what) {
    throw PictureError(std::string(what) + ": " + std::strerror(errno));
}

/// An open file that is closed on every path out.
class OpenFile {
public:
    explicit OpenFile(int descriptor) : m_descriptor(descriptor) {}
    ~OpenFile() {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    void write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t written = ::write(m_descriptor, bytes.data(), bytes.size());
            if (written < 0 && errno != EINTR) {
                fail("cannot be written");
            }
            bytes.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
        }
    }

    void flush() {
        if (::fsync(m_descriptor) != 0 && errno != EINVAL && errno != EROFS) {
            fail("cannot be written");
        }
    }

    void close() {
        const int descriptor = m_descriptor;
        m_descriptor = -1;
        if (::close(descriptor) != 0) {
            fail("cannot be written");
        }
    }

    int descriptor() const { return m_descriptor; }

private:
    int m_descriptor;
};

/// A file of its own name that disappears unless it is renamed.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& beside)
        : m_path(beside + ".XXXXXX"), m_file(::mkstemp(m_path.data())) {
        if (m_file.descriptor() < 0) {
            fail("cannot be written");
        }
    }
    ~TemporaryFile() {
        if (!m_path.empty()) {
            ::unlink(m_path.c_str());
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void write(std::string_view bytes) {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        ::fchmod(m_file.descriptor(), 0666 & ~mask);
        m_file.write(bytes);
        m_file.flush();
        m_file.close();
    }

    void renameTo(const std::string& path) {
        if (::rename(m_path.c_str(), path.c_str()) != 0) {
            fail("cannot be written");
        }
        m_path.clear();
    }

private:
    std::string m_path;
    OpenFile m_file;
};

/// Where a link leads: the file behind it is replaced, not the link.
std::string behindLinks(const std::string& path) {
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(path, error);
    return error ? path : real.string();
}

}  // namespace

void writeOutputFile(const std::string& path, std::string_view bytes) {
    const std::string target = behindLinks(path);
    struct stat status {};
    const bool exists = ::stat(target.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) {
        throw PictureError("cannot be written: it is a folder");
    }
    if (exists && !S_ISREG(status.st_mode)) {
        OpenFile device(::open(target.c_str(), O_WRONLY | O_CLOEXEC));
        if (device.descriptor() < 0) {
            fail("cannot be written");
        }
        device.write(bytes);
        device.close();
        return;
    }
    TemporaryFile file(target);
    file.write(bytes);
    file.renameTo(target);
}

}  // namespace qxdraw
