#pragma once

// What this process costs, as the benchmarks and the soak report it.
namespace ProcessFigures {

// CPU time of the whole process (all threads) in milliseconds.
double cpuMs();
// Resident memory in MB (VmRSS), 0 where /proc is not there.
double residentMb();

} // namespace ProcessFigures
