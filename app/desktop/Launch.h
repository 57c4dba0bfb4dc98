#pragma once

namespace tolvane::app {

/// The desktop program, from its arguments to its exit status. It ends early, without a window, after a text
/// for standard output, after a usage error, when the request was handed over to an instance that runs
/// already, and where there is no display.
///
/// May end the process by itself instead of returning, once everything is closed.
int launch(int count, char** arguments);

} // namespace tolvane::app
