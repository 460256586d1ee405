#pragma once

#include "Foundation/Result.h"
#include "Model/Annotation.h"

#include <string_view>
#include <vector>

namespace Nimbrel {

/// Reads marks written as JSON: a list of objects, in the order in which they are drawn.
///
/// `kind` (a raw value) and `start` ([x, y]) are required, `end` too but for a step or a label, where it is otherwise
/// the same as `start`. `colorIndex` and `number` are whole numbers, 0 when left out; `text` is empty when left out.
/// Members of other names are passed over. Each mark gets an id of its own.
///
/// Anything else gives an error that says what is wrong with which mark, counted from 0: "marks[2]: …". Any thread.
[[nodiscard]] Result<std::vector<Annotation>> marksFromJSON(std::string_view json);

}  // namespace Nimbrel
