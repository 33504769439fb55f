// Load, death and unload cycles in one process: the library is loaded, started, told to
// die and closed (dlclose) again and again, 100 times at level 5 and 1000 at level 10
// (a panel is opened and fed a pixel every 25th cycle). After every cycle the plug-in
// holds nothing and the host has no registration of it left; the library file is no
// longer mapped (else a cycle would not be a fresh load); over the cycles the count of
// open files does not change and memory does not grow (see the tolerances below), and
// under AddressSanitizer LeakSanitizer finds no leak.
#include "script/ScriptSession.h"
#include "validate/CheckRegistry.h"
#include "validate/ContractRules.h"
#include "validate/ProcessMeasures.h"
#include "validate/SlotArguments.h"
#include "validate/SuiteCalls.h"

namespace qzhost::validate {

namespace {

constexpr int kWarmUpCycles = 10;
constexpr int kPanelEvery = 25;
// Memory is compared between the middle and the end of the measured cycles, after a
// warm-up in which the host's caches fill (locale data, the string cache, the allocator's
// arenas). Heap bytes in use are exact; a leak of 64 bytes a cycle over the 45 cycles
// of the second half at level 5 is 2,880 bytes, so 2 KiB is the bar that such a leak
// clears. The resident size moves in pages and with the allocator's trimming (it gives
// memory back in steps of 128 KiB), so its bar is 1 MiB: a coarse guard against
// leaks that bypass the C allocator (mappings), which the heap figure does not see.
constexpr std::size_t kHeapGrowthTolerance = 2048;
constexpr std::size_t kResidentGrowthTolerance = 1024 * 1024;

int CycleCount(int level) {
    return 100 + (level - 5) * 180; // 100 at level 5, 1000 at level 10
}

struct Measure {
    std::size_t files = 0;
    std::size_t resident = 0;
    std::size_t heap = 0;
};

Measure Take() {
    return {OpenFileCount(), ResidentBytes(), HeapBytesInUse()};
}

long Growth(std::size_t from, std::size_t to) {
    return static_cast<long>(to) - static_cast<long>(from);
}

void Cycle(ValidationHost& host, const CheckContext& context, int cycle, bool check_mapping) {
    const std::string when = "cycle " + std::to_string(cycle);
    const Json load = RunOp(host, "load", when + ", the entry");
    RequireResult(load, {0}, when + ", the entry");
    if (cycle % kPanelEvery == 0 && !ValidationHost::State().tabCreators.empty()) {
        RunOp(host, WorkspaceLine("open"), when + ", opening the panel");
        if (ValidationHost::SuitePublished()) {
            CallSlotChecked(host, nullptr, 4, PlainArgs(4, cycle), false, when);
            CallSlotChecked(host, nullptr, 0, PlainArgs(0, cycle), true, when);
        }
        RunMainChecked(host, when);
        RunOp(host, WorkspaceLine("close"), when + ", closing the panel");
    }
    const Json death = RunOp(host, "death", when + ", the death hook");
    if (death.contains("result")) {
        RequireResult(death, {0}, when + ", the death hook");
    }
    const HostState after = ValidationHost::State();
    Require(after.held.empty(),
            when + ": after the death hook the plug-in holds " + Listed(after.held));
    Require(after.tabCreators.empty(), when + ": after the death hook the tab creator is "
                                              "still registered");
    RunOp(host, "unload", when + ", unloading");
    if (check_mapping) {
        Require(!IsMapped(context.Plugin()),
                when + ": the library is still mapped after dlclose (a library that cannot "
                       "be unloaded cannot be loaded afresh)");
    }
}

std::string LoadUnloadCycles(const CheckContext& context) {
    const int cycles = CycleCount(context.Level());
    ValidationHost host(context.Plugin());
    context.Step("warm-up cycles");
    for (int cycle = 1; cycle <= kWarmUpCycles; ++cycle) {
        Cycle(host, context, cycle, cycle == 1);
    }
    const Measure start = Take();
    const int middle = kWarmUpCycles + (cycles - kWarmUpCycles) / 2;
    Measure half;
    for (int cycle = kWarmUpCycles + 1; cycle <= cycles; ++cycle) {
        if (cycle % 100 == 1) {
            context.Step("cycle " + std::to_string(cycle) + " of " + std::to_string(cycles));
        }
        Cycle(host, context, cycle, cycle % 100 == 0 || cycle == cycles);
        if (cycle == middle) {
            half = Take();
        }
    }
    const Measure end = Take();
    RequireNoViolations("load and unload cycles");
    RequireNothingReported("load and unload cycles");
    Require(end.files == start.files, "open files went from " + std::to_string(start.files) +
                                          " to " + std::to_string(end.files) + " over " +
                                          std::to_string(cycles - kWarmUpCycles) + " cycles");
    std::string memory;
    if (UnderAddressSanitizer()) {
        Require(!LeakCheckFoundLeaks(), "LeakSanitizer found leaks after " +
                                            std::to_string(cycles) +
                                            " cycles (its report is on standard error)");
        memory = "LeakSanitizer found no leak";
    } else {
        const long heap = Growth(half.heap, end.heap);
        const long resident = Growth(half.resident, end.resident);
        const std::string second_half =
            " over the last " + std::to_string(cycles - middle) + " cycles";
        Require(heap <= static_cast<long>(kHeapGrowthTolerance),
                "heap in use grew by " + std::to_string(heap) + " bytes" + second_half);
        Require(resident <= static_cast<long>(kResidentGrowthTolerance),
                "resident memory grew by " + std::to_string(resident / 1024) + " KiB" +
                    second_half);
        memory = "heap " + std::to_string(heap) + " bytes and resident size " +
                 std::to_string(resident / 1024) + " KiB" + second_half;
    }
    return std::to_string(cycles) + " cycles; open files steady at " + std::to_string(end.files) +
           "; " + memory;
}

} // namespace

void AddLifecycleChecks(std::vector<Check>& checks) {
    checks.push_back({"lifecycle.load-unload", 5,
                      "load, death and unload cycles: no growth of suites, registrations, "
                      "files or memory",
                      LoadUnloadCycles});
}

} // namespace qzhost::validate
