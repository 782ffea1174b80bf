#pragma once

// What every benchmark of this project shares: a seeded random source, a
// stopwatch, heap and page-fault counts, and the report of a figure against
// its floor (the least work that gives the same result in plain code).

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

namespace t4::bench {

// splitmix64: small, fast and the same on every platform.
class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}
  uint64_t Next() {
    uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
  }
  // Uniform in [0, 1).
  double Unit() { return static_cast<double>(Next() >> 11) * 0x1.0p-53; }
  uint32_t Below(uint32_t n) { return static_cast<uint32_t>(Next() % n); }

 private:
  uint64_t state_;
};

double Ms(std::chrono::steady_clock::duration d);

class Stopwatch {
 public:
  double Ms() const { return bench::Ms(std::chrono::steady_clock::now() - start_); }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

// Heap handed out by malloc, in bytes (chunk headers included).
size_t HeapInUse();
// Pages the process has faulted in so far. On the project's virtual
// machine a fresh page costs some microseconds, enough to dominate an
// operation that needs new memory.
long PageFaults();
// The resident set size, from /proc/self/statm.
size_t ResidentBytes();

// Floor times by name, filled by the floor benchmarks (registered first).
std::map<std::string, double>& FloorMs();
// Adds the page faults of one timed run to the benchmark's count, which it
// reports per iteration.
void CountFaults(benchmark::State& state, long faults);
void ReportFloor(benchmark::State& state, const std::string& name, double totalMs);
// model_ms, target_ms, and against the floor of the same name floor_ms and
// x_floor.
void ReportModel(benchmark::State& state, const std::string& name, double totalMs, double targetMs);

// Runs f once as one manually timed iteration; returns its milliseconds.
template <class F>
double Timed(benchmark::State& state, F&& f) {
  const long faults = PageFaults();
  Stopwatch watch;
  f();
  const double ms = watch.Ms();
  CountFaults(state, PageFaults() - faults);
  state.SetIterationTime(ms / 1000.0);
  return ms;
}

}  // namespace t4::bench
