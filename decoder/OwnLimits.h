#pragma once

/// The limits that the program sets itself, so that a file made to exhaust its decoder ends only this
/// process. They are set before the first byte of the file is read and cannot be raised again.
namespace tolvane::decoder {

/// Limits memory, processor and elapsed time, open files, written files and core dumps. False on failure.
[[nodiscard]] bool limitOwnResources();

/// Removes everything from the environment by which libraries could find a display, a session or plug-ins,
/// and selects the platform plug-in that draws into memory.
void forgetTheSession();

} // namespace tolvane::decoder
