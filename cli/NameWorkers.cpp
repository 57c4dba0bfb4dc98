#include "cli/NameWorkers.h"

#include "platform/values/FatalError.h"
#include "platform/values/JoinedThread.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace tolvane::cli {

namespace {

using platform::Result;

// Text ahead of its turn: a thread that has this much waits until it may write.
constexpr std::size_t mostHeld = 65'536;

/// Names that one thread works on, and their place in the order.
struct Portion {
    std::size_t place = 0;
    std::vector<std::string> names;
    std::optional<platform::Error> fault; ///< Where the list could not be read on after them.
};

/// Whose turn it is to write, and the outputs, which only that thread uses.
class Turns {
public:
    Turns(Output& output, platform::OutputStream& errors, std::string_view separator)
        : output_(output)
        , errors_(errors)
        , separator_(separator) {}

    bool isOn(std::size_t place) {
        const std::lock_guard lock(mutex_);
        return turn_ == place;
    }

    void await(std::size_t place) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return turn_ == place; });
    }

    void pass() {
        const std::lock_guard lock(mutex_);
        ++turn_;
        changed_.notify_all();
    }

    /// Whether an output has failed, after which nothing is worth doing.
    bool areOver() const { return over_; }
    bool isTerminal() const { return output_.isTerminal(); }
    ExitStatus status() const { return status_; }

    void separate() {
        if (anyPrinted_ && !over_) {
            output_.write(separator_);
        }
    }

    Result<void> print(std::string_view text) {
        anyPrinted_ = true;
        if (!over_ && (!output_.write(text) || !output_.flush())) {
            over_ = true;
        }
        return output_.failure() ? Result<void>(std::unexpected(*output_.failure())) : Result<void>();
    }

    void complain(std::string_view message) {
        status_ = ExitStatus::failure;
        if (!over_ && !cli::complain(errors_, message)) {
            over_ = true;
        }
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::size_t turn_ = 0;

    Output& output_;
    platform::OutputStream& errors_;
    std::string_view separator_;
    bool anyPrinted_ = false;
    ExitStatus status_ = ExitStatus::success;
    std::atomic<bool> over_ = false;
};

/// What one portion's names give: held until it is its turn, then written as it comes.
class PortionResults final : public NameResults, private platform::OutputStream {
public:
    PortionResults(Turns& turns, std::size_t place, std::string_view separator)
        : turns_(turns)
        , place_(place)
        , separator_(separator) {}
    PortionResults(const PortionResults&) = delete;
    PortionResults& operator=(const PortionResults&) = delete;
    ~PortionResults() override = default;

    Output& output() override { return text_; }

    void complain(std::string_view name, std::string_view reason) override {
        text_.flush();
        awaitTurn();
        turns_.complain(std::string(name).append(": ").append(reason));
    }

    void endName() {
        text_.flush();
        isBegun_ = false;
    }

    /// Writes what is held once all before it is written.
    void awaitTurn() {
        if (hasTurn_) {
            return;
        }
        turns_.await(place_);
        hasTurn_ = true;
        if (!held_.empty()) {
            turns_.separate();
            static_cast<void>(turns_.print(std::exchange(held_, {})));
        }
    }

private:
    Result<void> write(std::string_view bytes) override {
        if (!hasTurn_ && (held_.size() + bytes.size() > mostHeld || turns_.isOn(place_))) {
            awaitTurn();
        }
        const bool begins = !std::exchange(isBegun_, true);
        if (hasTurn_) {
            if (begins) {
                turns_.separate();
            }
            return turns_.print(bytes);
        }
        if (begins && !held_.empty()) {
            held_ += separator_;
        }
        held_ += bytes;
        return {};
    }

    bool isTerminal() const override { return turns_.isTerminal(); }

    Turns& turns_;
    std::size_t place_;
    std::string_view separator_;
    bool hasTurn_ = false;
    bool isBegun_ = false; // whether there is text of the present name
    std::string held_;
    Output text_{*this};
};

class NameWorkers {
public:
    NameWorkers(Names& names, const NameWork& work, Output& output, platform::OutputStream& errors)
        : names_(names)
        , work_(work)
        , turns_(output, errors, work.separator) {}

    ExitStatus run() {
        doWork();
        // No thread begins another any more.
        threads_.clear();
        return turns_.status();
    }

private:
    void doWork() {
        while (const auto portion = nextPortion()) {
            PortionResults results(turns_, portion->place, work_.separator);
            const platform::BeforeFatalError writingFirst([&results] { results.awaitTurn(); });
            for (const std::string& name : portion->names) {
                if (turns_.areOver()) {
                    break;
                }
                work_.work(name, results);
                results.endName();
            }
            if (portion->fault) {
                results.complain(work_.source, portion->fault->localizedDescription());
            }
            results.awaitTurn();
            turns_.pass();
        }
    }

    std::optional<Portion> nextPortion() {
        const std::lock_guard lock(mutex_);
        if (!isEnded_ && !names_.isNextAtHand()) {
            // Waiting for input must not delay the end of a run whose output fails.
            turns_.await(portions_);
        }
        Portion portion{portions_, {}, {}};
        isEnded_ = isEnded_ || turns_.areOver();
        while (!isEnded_ && portion.names.size() < work_.namesAtOnce
               && (portion.names.empty() || names_.isNextAtHand())) {
            Result<std::optional<std::string>> name = names_.next();
            if (name && *name) {
                portion.names.push_back(**std::move(name));
            } else {
                isEnded_ = true;
                portion.fault = name ? std::nullopt : std::optional(name.error());
            }
        }
        if (portion.names.empty() && !portion.fault) {
            return std::nullopt;
        }
        ++portions_;
        if (!isEnded_ && names_.isNextAtHand() && threads_.size() + 1 < mostThreads()) {
            beginThread();
        }
        return portion;
    }

    /// Counting processors takes system calls, which one name alone does without.
    std::size_t mostThreads() {
        if (work_.jobs == 0) {
            work_.jobs = std::max(1U, std::thread::hardware_concurrency());
        }
        return work_.jobs;
    }

    void beginThread() {
        try {
            threads_.emplace_back([this] { doWork(); });
        } catch (const std::system_error&) {
            work_.jobs = threads_.size() + 1;
        }
    }

    Names& names_;
    NameWork work_;
    Turns turns_;
    std::mutex mutex_; // of what follows, and the names
    std::size_t portions_ = 0;
    bool isEnded_ = false;
    std::vector<platform::JoinedThread> threads_;
};

} // namespace

ExitStatus workOnNames(Names& names, const NameWork& work, Output& output, platform::OutputStream& errors) {
    return NameWorkers(names, work, output, errors).run();
}

} // namespace tolvane::cli
