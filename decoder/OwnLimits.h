#pragma once

/// What the program allows itself, so that a file made to exhaust its reader ends this process and nothing
/// else. Set before the first byte of the file is read, and never to be raised again.
namespace tolvane::decoder {

/// Memory, processor time, open files, files written (none), core dumps (none), and time by the clock. False
/// when the system refused one of them.
[[nodiscard]] bool limitOwnResources();

/// Leaves nothing in the environment by which libraries could find a display, a session or extra plug-ins,
/// and asks for the platform that draws into memory.
void forgetTheSession();

} // namespace tolvane::decoder
