#pragma once
// Time seams. Every clock in the program reads one time source: a monotonic millisecond counter
// (the high-resolution counter as a player's machine has it). Tests replace the source to drive
// time, and --fixed-dt makes every frame last the same, so races replay exactly.
#include <cstdint>
#include <functional>

// Milliseconds of the high-resolution counter; safe from any thread.
int64_t GetTimeMs();
// Milliseconds since the program started (the stand-in for SDL's tick count and for the process
// clock), from the same source.
uint32_t GetTicks();
int64_t GetClockMs();
void SleepMs(uint32_t milliseconds);

// Replaces the time source (milliseconds); nullptr restores the real counter. Sleeping with a
// replaced source advances nothing and returns at once.
using VeTimeSource = std::function<int64_t()>;
void SetTimeSource(VeTimeSource source);
// Replaces the time source for the calling thread alone, ahead of the shared one (a background job
// that races on a clock of its own while the frames go on); nullptr removes it.
void SetThreadTimeSource(VeTimeSource source);

// A frame delta in seconds that every frame uses instead of the measured one; 0 measures.
void SetFixedFrameDelta(float seconds);
float GetFixedFrameDelta();
