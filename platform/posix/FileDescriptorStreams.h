/// The terminal program's streams over file descriptors: standard input and output, and input files.
///
/// Nothing is buffered. Interrupted calls are repeated, and non-blocking descriptors are waited for.
#pragma once

#include "platform/posix/FileDescriptor.h"
#include "platform/services/Streams.h"

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

    Result<void> write(std::string_view bytes) override { return writeAll(descriptor_, bytes); }
    bool isTerminal() const override;

private:
    FileDescriptor descriptor_;
};

/// Opens an input file of the program, never one that it inspects. The path is bytes; one that contains a NUL
/// fails with EINVAL.
Result<std::unique_ptr<InputStream>> openForReading(std::string_view path);

/// Makes writing to a closed pipe, or past the file size limit, an error of that write instead of ending the
/// process. Applies to the whole process and the programs it starts.
void makeWriteFailuresErrors();

} // namespace tolvane::platform
