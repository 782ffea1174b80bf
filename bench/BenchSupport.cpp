#include "BenchSupport.h"

#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>

namespace t4::bench {

double Ms(std::chrono::steady_clock::duration d) {
  return std::chrono::duration<double, std::milli>(d).count();
}

size_t HeapInUse() {
  const struct mallinfo2 mi = mallinfo2();
  return mi.uordblks + mi.hblkhd;
}

long PageFaults() {
  struct rusage usage {};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt + usage.ru_majflt;
}

size_t ResidentBytes() {
  long pages = 0, resident = 0;
  if (FILE* f = std::fopen("/proc/self/statm", "r")) {
    if (std::fscanf(f, "%ld %ld", &pages, &resident) != 2) resident = 0;
    std::fclose(f);
  }
  return static_cast<size_t>(resident) * static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

std::map<std::string, double>& FloorMs() {
  static std::map<std::string, double> ms;
  return ms;
}

void CountFaults(benchmark::State& state, long faults) {
  benchmark::Counter& c = state.counters["page_faults"];
  c.value += static_cast<double>(faults);
  c.flags = benchmark::Counter::kAvgIterations;
}

void ReportFloor(benchmark::State& state, const std::string& name, double totalMs) {
  const double ms = totalMs / static_cast<double>(state.iterations());
  FloorMs()[name] = ms;
  state.counters["floor_ms"] = ms;
}

void ReportModel(benchmark::State& state, const std::string& name, double totalMs,
                 double targetMs) {
  const double ms = totalMs / static_cast<double>(state.iterations());
  state.counters["model_ms"] = ms;
  state.counters["target_ms"] = targetMs;
  const auto floor = FloorMs().find(name);
  if (floor != FloorMs().end() && floor->second > 0) {
    state.counters["floor_ms"] = floor->second;
    state.counters["x_floor"] = ms / floor->second;
  }
}

}  // namespace t4::bench
