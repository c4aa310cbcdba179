#pragma once

namespace BE {

// Whether a change of the project becomes a step of its undo history.
enum class UndoMode { kWithoutUndoStep, kAsUndoStep };

} // namespace BE
