#pragma once

#include "cli/Names.h"
#include "cli/Output.h"
#include "platform/services/Streams.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

/// Works on many names with several threads, for every command that takes them.
///
/// Results and complaints come out in the order of the names, each as soon as it and all before it are done,
/// so the outputs get what a single thread would have written. What is done ahead of its turn waits in
/// memory, as much as one thread finds for a few names, whatever their number.
namespace tolvane::cli {

/// Where the work on one name leaves what it finds.
class NameResults {
public:
    virtual ~NameResults() = default;

    /// Text for standard output.
    virtual Output& output() = 0;

    /// A line for standard error, after the text so far. The run then ends in failure.
    virtual void complain(std::string_view name, std::string_view reason) = 0;
};

struct NameWork {
    /// Called for each name, by several threads at a time.
    std::function<void(const std::string& name, NameResults& results)> work;
    /// How many threads work at most, this one among them; 0 is one for each processor.
    std::size_t jobs = 1;
    /// How many names a thread takes at a time: many where each costs little.
    std::size_t namesAtOnce = 1;
    /// Stands between the texts of two names.
    std::string_view separator = {};
    /// Names the list in complaints about it.
    std::string_view source = {};
};

/// Works on all names and returns when everything is written. Another thread begins only when more names may
/// be at hand than those at work have taken, so one name starts none; where the system has no more threads,
/// fewer do the work.
///
/// A name is waited for only once everything about those before is written. The run ends early if the list
/// cannot be read or an output fails. After a fatal error everything about the names before is written.
ExitStatus workOnNames(Names& names, const NameWork& work, Output& output, platform::OutputStream& errors);

} // namespace tolvane::cli
