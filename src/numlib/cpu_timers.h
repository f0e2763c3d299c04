// CPU timers: Z02ECPU (bank of 99 timers) and Z02CPUT (the " CPU time used:"
// line), with the reset and clock hook used by tests.
#pragma once

// Reads or starts timer |k| (1..99) and returns seconds.  k < 0 starts timer
// -k and gives 0; k = 0 counts as -1; k > 0 gives the CPU time since timer k
// was started, or starts it and gives 0 when it was never started.  |k| > 99
// writes "Z02ECPU --E- Timer number exceeds 99." and gives 0.
double Z02ECPU(int k);

// T = Z02ECPU(k), split into whole minutes and the seconds left over.  For
// k > 0 the line " CPU time used:",I8," min ",F5.2," sec" is written on
// channel (below 1, 5 and 6 mean the terminal).
void Z02CPUT(int k, int& minutes, double& seconds, int channel);

// Back to the program's start: every timer unstarted, the process clock.
void resetCpuTimers();

// Replaces the source of CPU seconds (nullptr restores the process clock).
// Tests use it to drive the timers with known times.
void setCpuClock(double (*clock)());
