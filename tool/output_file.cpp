#include "output_file.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

// What a signal takes away. Only one output is open at a time; the handler reads the flag before the name.
char temporaryName[PATH_MAX];
volatile sig_atomic_t temporaryExists = 0;

extern "C" void onInterrupt(int number) {
    if (temporaryExists) unlink(temporaryName);
    signal(number, SIG_DFL);
    raise(number);
}

void catchInterrupts() {
    for (int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE}) {
        struct sigaction action = {};
        if (sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) continue;   // nohup
        action.sa_handler = onInterrupt;
        sigfillset(&action.sa_mask);
        sigaction(number, &action, nullptr);
    }
    signal(SIGXFSZ, SIG_IGN);   // a file beyond the limit is an error of write() then, like a full disk
}

[[noreturn]] void failToWrite(const std::string& path) { throw Failure("cannot write " + path + ": " + std::strerror(errno)); }

}   // namespace

OutputFile::OutputFile(const std::string& path) : path_(path) {
    catchInterrupts();
    if (path == "-") {
        path_ = "the standard output";
        fd_ = dup(STDOUT_FILENO);
        if (fd_ < 0) failToWrite(path_);
        return;
    }
    struct stat there = {};
    const bool exists = stat(path.c_str(), &there) == 0;
    if (exists && !S_ISREG(there.st_mode)) {
        fd_ = open(path.c_str(), O_WRONLY | O_CLOEXEC);
        if (fd_ < 0) failToWrite(path_);
        return;
    }
    if (exists && access(path.c_str(), W_OK) != 0) failToWrite(path_);
    target_ = path;
    if (char* resolved = exists ? realpath(path.c_str(), nullptr) : nullptr) {   // through a link, to what it stands for
        target_ = resolved;
        std::free(resolved);
    }
    const size_t slash = target_.rfind('/') + 1;   // 0 without one
    temporary_ = target_.substr(0, slash) + "." + target_.substr(slash).substr(0, 200) + ".XXXXXX";
    if (temporary_.size() >= sizeof temporaryName) throw Failure("cannot write " + path_ + ": " + std::strerror(ENAMETOOLONG));

    sigset_t all, before;   // an interrupt between the file and its entry would leave it behind
    sigfillset(&all);
    sigprocmask(SIG_SETMASK, &all, &before);
    fd_ = mkostemp(temporary_.data(), O_CLOEXEC);
    const int error = errno;
    if (fd_ >= 0) {
        std::strcpy(temporaryName, temporary_.c_str());
        temporaryExists = 1;
    }
    sigprocmask(SIG_SETMASK, &before, nullptr);
    if (fd_ < 0) {
        temporary_.clear();
        errno = error;
        failToWrite(path_);
    }
    const mode_t mask = umask(0);
    umask(mask);
    fchmod(fd_, exists ? there.st_mode & 07777 : 0666 & ~mask);
}

OutputFile::~OutputFile() {
    if (fd_ >= 0) close(fd_);
    if (!temporary_.empty()) {
        unlink(temporary_.c_str());
        temporaryExists = 0;
    }
}

bool OutputFile::seekable() const { return lseek(fd_, 0, SEEK_CUR) >= 0; }

void OutputFile::write(const void* data, size_t size) {
    auto* at = static_cast<const char*>(data);
    while (size) {
        const ssize_t written = ::write(fd_, at, size);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) failToWrite(path_);
        at += written;
        size -= size_t(written);
    }
}

void OutputFile::commit() {
    if (close(std::exchange(fd_, -1)) != 0) failToWrite(path_);   // where a disk far away reports that it is full
    if (temporary_.empty()) return;
    if (rename(temporary_.c_str(), target_.c_str()) != 0) failToWrite(path_);
    temporaryExists = 0;
    temporary_.clear();
}
