#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

/// Starts a program and waits until a window has been painted whose title begins as told; then ends the
/// program and itself. For a display without a window manager, where windows lie directly on a root that is
/// black.
///
///     tolvane-await-window [--memory FILE] [--keep] TITLE PROGRAM [ARGUMENT…]
///
/// With --memory, the program's resident memory in KiB goes to a file, half a second after that. With --keep,
/// the program is left running. Gives up after half a minute.
namespace {

template <typename T>
using FromLibrary = std::unique_ptr<T, decltype(&std::free)>;

template <typename T>
FromLibrary<T> owned(T* object) {
    return {object, &std::free};
}

/// The property that holds titles in UTF-8.
xcb_atom_t titleProperty(xcb_connection_t* connection) {
    constexpr std::string_view name = "_NET_WM_NAME";
    const auto reply = owned(
        xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, name.size(), name.data()), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_WM_NAME};
}

bool titleBegins(xcb_connection_t* connection, xcb_window_t window, std::string_view title) {
    constexpr std::uint32_t longest = 256;
    const auto reply = owned(xcb_get_property_reply(
        connection,
        xcb_get_property(
            connection, 0, window, titleProperty(connection), XCB_GET_PROPERTY_TYPE_ANY, 0, longest),
        nullptr));
    if (!reply) {
        return false;
    }
    const std::string_view name(
        static_cast<const char*>(xcb_get_property_value(reply.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    return name.starts_with(title);
}

/// Whether a spot near the window's corner shows something else than the black root.
bool isPainted(xcb_connection_t* connection, xcb_window_t window) {
    constexpr std::int16_t place = 60;
    const auto image = owned(xcb_get_image_reply(
        connection, xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window, place, place, 1, 1, ~0U),
        nullptr));
    if (!image || xcb_get_image_data_length(image.get()) < 3) {
        return false;
    }
    const std::uint8_t* const pixel = xcb_get_image_data(image.get());
    return pixel[0] + pixel[1] + pixel[2] > 0;
}

bool hasPaintedWindow(xcb_connection_t* connection, xcb_window_t root, std::string_view title) {
    const auto tree = owned(xcb_query_tree_reply(connection, xcb_query_tree(connection, root), nullptr));
    if (!tree) {
        return false;
    }
    const xcb_window_t* const windows = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        if (titleBegins(connection, windows[i], title) && isPainted(connection, windows[i])) {
            return true;
        }
    }
    return false;
}

std::string residentMemory(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return std::to_string(std::atol(line.c_str() + 6));
        }
    }
    return {};
}

int usage() {
    static_cast<void>(std::fputs(
        "Usage: tolvane-await-window [--memory FILE] [--keep] TITLE PROGRAM [ARGUMENT…]\n", stderr));
    return 2;
}

} // namespace

int main(int count, char** arguments) {
    using namespace std::chrono_literals;
    std::vector<char*> rest(arguments + 1, arguments + count);
    std::string memoryFile;
    bool keep = false;
    while (!rest.empty() && std::string_view(rest.front()).starts_with("--")) {
        if (std::string_view(rest.front()) == "--memory" && rest.size() > 1) {
            memoryFile = rest[1];
            rest.erase(rest.begin());
        } else if (std::string_view(rest.front()) == "--keep") {
            keep = true;
        } else {
            return usage();
        }
        rest.erase(rest.begin());
    }
    if (rest.size() < 2) {
        return usage();
    }
    const std::string title = rest.front();
    rest.erase(rest.begin());
    rest.push_back(nullptr);

    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        static_cast<void>(std::fputs("tolvane-await-window: there is no display\n", stderr));
        return 1;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;

    pid_t program = 0;
    if (posix_spawnp(&program, rest.front(), nullptr, nullptr, rest.data(), environ) != 0) {
        static_cast<void>(std::fputs("tolvane-await-window: the program cannot be started\n", stderr));
        return 1;
    }
    const auto limit = std::chrono::steady_clock::now() + 30s;
    bool painted = false;
    while (!painted && std::chrono::steady_clock::now() < limit) {
        painted = hasPaintedWindow(connection, root, title);
        if (!painted) {
            std::this_thread::sleep_for(1ms);
        }
    }
    if (painted && !memoryFile.empty()) {
        std::this_thread::sleep_for(500ms);
        std::ofstream(memoryFile) << residentMemory(program) << '\n';
    }
    if (!keep) {
        kill(program, SIGKILL);
        waitpid(program, nullptr, 0);
        // The display may need a moment to notice, and the next one must not take this window for its own.
        while (hasPaintedWindow(connection, root, title) && std::chrono::steady_clock::now() < limit) {
            std::this_thread::sleep_for(1ms);
        }
    }
    return painted ? 0 : 1;
}
