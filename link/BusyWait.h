#pragma once

#include <QtGlobal>

// Returns after ms milliseconds have passed, processing events meanwhile (at
// most 100 ms at a time), so serial answers and button slots run inside the
// wait. This is the only pacing of the request sequences.
void busyWait(int ms);

// Time spent in busyWait() since the start of the process (for the start-up
// trace: the unit's fixed waits are not the program's own work).
qint64 busyWaitTotalMs();
