// The streams of a terminal program over file descriptors: standard input and output, and files to be read.
//
// Every byte goes straight to or from the system, nothing is held back. Interrupted calls are made again, and
// descriptors that do not block are waited for, so a caller meets neither.
#pragma once

#include "platform/Streams.h"
#include "platform/linux/FileDescriptor.h"

#include <memory>
#include <utility>

namespace tolvane::platform {

class FileDescriptorInput final : public InputStream {
public:
    explicit FileDescriptorInput(FileDescriptor descriptor) : descriptor_(std::move(descriptor)) {}

    Result<std::size_t> read(std::span<char> buffer) override;

private:
    FileDescriptor descriptor_;
};

class FileDescriptorOutput final : public OutputStream {
public:
    explicit FileDescriptorOutput(FileDescriptor descriptor) : descriptor_(std::move(descriptor)) {}

    Result<void> write(std::string_view bytes) override;
    bool isTerminal() const override;

private:
    FileDescriptor descriptor_;
};

/// Opens a file that holds input for the program, never one that it inspects. The path is bytes; one with a
/// NUL in it is refused with EINVAL.
Result<std::unique_ptr<InputStream>> openForReading(std::string_view path);

/// From now on writing to a pipe that nobody reads, or past the limit for a file's size, is an error of that
/// write and does not end the process.
/// Holds for the whole process and for the programs that it starts.
void makeWriteFailuresErrors();

} // namespace tolvane::platform
