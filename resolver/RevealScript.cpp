#include "resolver/RevealScript.h"

namespace tolvane::resolver {

std::string revealScript(std::string_view path) {
    std::string script = "set thePath to POSIX file \"";
    script += path;
    script += "\"\ntell application \"Finder\" to reveal thePath";
    return script;
}

} // namespace tolvane::resolver
