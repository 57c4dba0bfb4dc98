#pragma once

#include "attributes/Family.h"

#include <cstddef>
#include <span>

namespace tolvane::attributes {

/// What a value of an unknown name looks like: the first form of a fixed order that it fits, and why; none
/// if it fits no form.
void explainByGuess(const Subject& subject, Answer& answer);

/// Whether bytes begin as a form that holds further values: a property list or a bookmark.
bool isContainer(std::span<const std::byte> bytes);

/// Adds what a text that is valid UTF-8 looks like (an address, a path, a number that is a date …), and the
/// text; the sentence.
std::string addTextGuess(std::string_view text, Answer& answer);

} // namespace tolvane::attributes
