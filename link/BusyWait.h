#pragma once

// Returns after ms milliseconds have passed, processing events meanwhile (at
// most 100 ms at a time), so serial answers and button slots run inside the
// wait. This is the only pacing of the request sequences.
void busyWait(int ms);
