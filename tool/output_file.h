#pragma once

#include <stdexcept>
#include <string>

// What could not be done, in words for the user: exit code 1.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// A file that appears under its name once it is whole. Until commit() it has a name of its own in the same directory; the destructor, and an interrupt, take that away.
// What is no regular file (a pipe, a device, "-" for the standard output) is written as it goes.
class OutputFile {
public:
    explicit OutputFile(const std::string& path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    int fd() const { return fd_; }
    const std::string& path() const { return path_; }
    bool seekable() const;
    void write(const void* data, size_t size);
    void commit();

private:
    std::string path_, target_, temporary_;
    int fd_ = -1;
};
