// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "picture/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
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

/// While it lasts, signals that would end the program wait: nothing half done is left behind.
class SignalHold {
public:
    SignalHold() {
        sigset_t ending;
        ::sigemptyset(&ending);
        for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
            ::sigaddset(&ending, signal);
        }
        ::pthread_sigmask(SIG_BLOCK, &ending, &m_before);
    }
    ~SignalHold() { ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    SignalHold(const SignalHold&) = delete;
    SignalHold& operator=(const SignalHold&) = delete;

private:
    sigset_t m_before{};
};

/// A file of its own name that disappears unless it is renamed.
class TemporaryFile {
public:
    /// With the permissions of `replaced`, which may be null: then with those of new files.
    TemporaryFile(const std::string& beside, const struct stat* replaced)
        : m_path(beside + ".XXXXXX"), m_file(::mkstemp(m_path.data())) {
        if (m_file.descriptor() < 0) {
            m_path.clear();
            fail("cannot be written");
        }
        if (replaced == nullptr) {
            const mode_t mask = ::umask(0);
            ::umask(mask);
            ::fchmod(m_file.descriptor(), 0666 & ~mask);
        } else {
            // Who may not give files away keeps the group or, failing that, neither.
            if (::fchown(m_file.descriptor(), replaced->st_uid, replaced->st_gid) != 0 &&
                ::fchown(m_file.descriptor(), static_cast<uid_t>(-1), replaced->st_gid) != 0) {
                errno = 0;
            }
            ::fchmod(m_file.descriptor(), replaced->st_mode & 0777);
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

bool isSameFile(const std::string& path, const std::string& other) {
    struct stat first {};
    struct stat second {};
    return ::stat(path.c_str(), &first) == 0 && ::stat(other.c_str(), &second) == 0 &&
           S_ISREG(first.st_mode) && first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

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
    if (exists && ::access(target.c_str(), W_OK) != 0) {
        fail("cannot be written");  // renaming would not ask
    }
    if (exists && status.st_nlink > 1) {
        throw PictureError("has a second name, which would keep the former contents: not written");
    }
    const SignalHold held;
    TemporaryFile file(target, exists ? &status : nullptr);
    file.write(bytes);
    file.renameTo(target);
}

}  // namespace qxdraw
