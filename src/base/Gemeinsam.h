#pragma once

#include <functional>

#include "base/Ausfuehrer.h"

namespace spurkiste {

/// Runs `arbeit` on the calling thread and, where they get to it in time, as up to `helfer` tasks of `ausfuehrer` at
/// once, and returns when all that began have ended. Helpers that come later find the door closed and do nothing, so
/// the caller never waits for a queue and may itself be one of the executor's tasks; and the work is done also when
/// there is no executor (null) or it never runs a task. `arbeit` has to share out what there is to do, for instance by
/// a counter. An exception of any of them comes out here, when all have ended; of several one. Any thread.
void arbeiteGemeinsam(Ausfuehrer* ausfuehrer, unsigned helfer, const std::function<void()>& arbeit);

}  // namespace spurkiste
