#include <array>
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
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

/// Starts a program, waits until a window has been painted whose title begins as told, and prints how many
/// microseconds that took from the start; then ends the program and itself. For a display without a window
/// manager, where windows lie directly on the root. The program's own output goes nowhere.
///
///     tolvane-await-window [--memory FILE] [--keep FILE] TITLE PROGRAM [ARGUMENT…]
///
/// With --memory, the program's resident memory in KiB goes to a file, half a second after that. With --keep,
/// the program is left running, and its number goes to a file. Gives up after half a minute.
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

/// Whether a spot near the window's corner shows something else than the curtain.
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

/// A black window over everything that is there: what has not been painted shows what lies below it.
void drawCurtain(xcb_connection_t* connection, const xcb_screen_t& screen) {
    const xcb_window_t curtain = xcb_generate_id(connection);
    const std::array<std::uint32_t, 2> values{screen.black_pixel, 1};
    xcb_create_window(
        connection, XCB_COPY_FROM_PARENT, curtain, screen.root, 0, 0, screen.width_in_pixels,
        screen.height_in_pixels, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual,
        XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
    xcb_map_window(connection, curtain);
    // The reply arrives once everything before it is done.
    owned(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
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
        "Usage: tolvane-await-window [--memory FILE] [--keep FILE] TITLE PROGRAM [ARGUMENT…]\n", stderr));
    return 2;
}

} // namespace

int main(int count, char** arguments) {
    using namespace std::chrono_literals;
    using Clock = std::chrono::steady_clock;
    std::vector<char*> rest(arguments + 1, arguments + count);
    std::string memoryFile;
    std::string numberFile;
    while (rest.size() > 1 && std::string_view(rest.front()).starts_with("--")) {
        const std::string_view option = rest.front();
        if (option != "--memory" && option != "--keep") {
            return usage();
        }
        (option == "--memory" ? memoryFile : numberFile) = rest[1];
        rest.erase(rest.begin(), rest.begin() + 2);
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
    const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const xcb_window_t root = screen.root;
    drawCurtain(connection, screen);

    posix_spawn_file_actions_t output{};
    posix_spawn_file_actions_init(&output);
    posix_spawn_file_actions_addopen(&output, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t program = 0;
    const auto begun = Clock::now();
    const int fault = posix_spawnp(&program, rest.front(), &output, nullptr, rest.data(), environ);
    posix_spawn_file_actions_destroy(&output);
    if (fault != 0) {
        static_cast<void>(std::fputs("tolvane-await-window: the program cannot be started\n", stderr));
        return 1;
    }
    const auto limit = begun + 30s;
    bool painted = false;
    while (!painted && Clock::now() < limit) {
        painted = hasPaintedWindow(connection, root, title);
        if (!painted) {
            std::this_thread::sleep_for(1ms);
        }
    }
    const auto taken = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - begun);
    if (painted && !memoryFile.empty()) {
        std::this_thread::sleep_for(500ms);
        std::ofstream(memoryFile) << residentMemory(program) << '\n';
    }
    if (!numberFile.empty()) {
        std::ofstream(numberFile) << program << '\n';
    } else {
        kill(program, SIGKILL);
        waitpid(program, nullptr, 0);
        // The display may need a moment to notice, and the next one must not take this window for its own.
        while (hasPaintedWindow(connection, root, title) && Clock::now() < limit) {
            std::this_thread::sleep_for(1ms);
        }
    }
    if (painted) {
        static_cast<void>(std::printf("%lld\n", static_cast<long long>(taken.count())));
    }
    return painted ? 0 : 1;
}
