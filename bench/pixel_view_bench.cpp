// What `qzhost inspect` costs. One point: the whole run in this process (the image opened,
// the host set up, the plug-in loaded, its panel opened, the pixel shown and printed).
// Each point of standard input, text and JSON: a run of many points less a run of one,
// divided by the points between them, so the figure is what one more line of standard
// input costs once the image is loaded and the host is up; measured twice, in this process
// (the panel text handed to a stream that counts it) and as the qzhost program reading a
// file of points and writing into a pipe that the benchmark reads, one flush per point.
#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

#include "BuildPaths.h"
#include "pixelview/PixelViewCommand.h"
#include "qzhost/MainLoop.h"

extern char** environ;

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using qzhost::pixelview::PixelViewOptions;
using qzhost::pixelview::RunPixelView;

constexpr int kManyPoints = 10000;
constexpr int kProgramPoints = 50000;

/// A file of the benchmark's own, so that the user's preferences are never touched.
std::string TempFile(const std::string& name) {
    return (fs::temp_directory_path() / ("qzpixelview-bench-" + name)).string();
}

/// Points spread over the bundled chart (240 by 160 pixels), one per line.
std::string Points(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += std::to_string((i * 7) % 240) + "," + std::to_string((i * 13) % 160) + "\n";
    }
    return text;
}

/// An output stream's buffer that keeps nothing and counts what it is given.
class CountingBuffer : public std::streambuf {
public:
    std::size_t Count() const noexcept { return count_; }

protected:
    std::streamsize xsputn(const char*, std::streamsize count) override {
        count_ += static_cast<std::size_t>(count);
        return count;
    }
    int_type overflow(int_type c) override {
        if (!traits_type::eq_int_type(c, traits_type::eof())) {
            ++count_;
        }
        return traits_type::not_eof(c);
    }

private:
    std::size_t count_ = 0;
};

/// The processor time of this thread, in seconds.
double ThreadCpu() {
    timespec now{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// One run of inspect in this process on `input`; its time in seconds, or a negative
/// number after reporting the failure. `cpu` is the processor time that the run took.
double TimedRun(benchmark::State& state, const PixelViewOptions& options, const std::string& input,
                std::size_t& printed, double& cpu) {
    std::istringstream in(input);
    CountingBuffer counted;
    std::ostream out(&counted);
    std::ostringstream err;
    const double cpu_start = ThreadCpu();
    const Clock::time_point start = Clock::now();
    const int status = RunPixelView(options, in, out, err);
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    cpu = ThreadCpu() - cpu_start;
    if (status != 0) {
        state.SkipWithError(err.str().c_str());
        return -1;
    }
    printed = counted.Count();
    return seconds;
}

// The cost of each further point: a run of `count` points less a run of one, over the
// other points. `run(input, printed, cpu)` times one run of the points in `input` and gives
// its wall time in seconds (or a negative value when it failed), the bytes it printed and
// its processor time. Reports the per-point figures as the benchmark's counters.
template <class Run>
void MeasureEachFurtherPoint(benchmark::State& state, const std::string& one,
                             const std::string& many, int count, Run run) {
    std::size_t printed = 0;
    double cpu_per_point = 0;
    for (auto _ : state) {
        double cpu_first = 0;
        double cpu_all = 0;
        const double first = run(one, printed, cpu_first);
        const double all = first < 0 ? -1 : run(many, printed, cpu_all);
        if (all < 0) {
            break;
        }
        state.SetIterationTime((all - first) / (count - 1));
        cpu_per_point += (cpu_all - cpu_first) / (count - 1);
    }
    state.SetItemsProcessed(state.iterations());
    state.counters["bytes_per_point"] = static_cast<double>(printed) / count;
    // The processor time per point, in microseconds.
    state.counters["cpu_us_per_point"] =
        state.iterations() > 0 ? cpu_per_point * 1e6 / static_cast<double>(state.iterations()) : 0;
}

void BM_PixelViewOnePoint(benchmark::State& state) {
    qzhost::MainLoop::Get().AdoptCurrentThread();
    PixelViewOptions options;
    options.at = {"45,85"};
    options.prefs = TempFile("preferences.txt");
    std::size_t printed = 0;
    double cpu = 0;
    for (auto _ : state) {
        if (TimedRun(state, options, "", printed, cpu) < 0) {
            break;
        }
    }
    state.counters["bytes_printed"] = static_cast<double>(printed);
}
BENCHMARK(BM_PixelViewOnePoint)->Unit(benchmark::kMillisecond);

void BM_PixelViewEachPointFromStandardInput(benchmark::State& state) {
    qzhost::MainLoop::Get().AdoptCurrentThread();
    PixelViewOptions options;
    options.at = {"-"};
    options.prefs = TempFile("preferences.txt");
    options.json = state.range(0) != 0;
    const std::string one = Points(1);
    const std::string many = Points(kManyPoints);
    MeasureEachFurtherPoint(state, one, many, kManyPoints,
                            [&](const std::string& input, std::size_t& printed, double& cpu) {
                                return TimedRun(state, options, input, printed, cpu);
                            });
}
// The time of an iteration is that of one point, but an iteration runs thousands: their
// number is set, not left to the library to grow until the points' time adds up.
BENCHMARK(BM_PixelViewEachPointFromStandardInput)
    ->ArgName("json")
    ->Arg(0)
    ->Arg(1)
    ->UseManualTime()
    ->Iterations(10)
    ->Unit(benchmark::kMicrosecond);

#ifdef QZ_QZHOST_PROGRAM

/// One run of the qzhost program with `input_file` as its standard input, its standard
/// output read from a pipe; its time in seconds from start to end, or a negative number
/// after reporting the failure. `cpu` is the processor time (user and system) that the
/// program took, which other work on the machine does not stretch.
double TimedProgram(benchmark::State& state, const std::vector<std::string>& arguments,
                    const std::string& input_file, std::size_t& printed, double& cpu) {
    std::vector<std::string> text = {QZ_QZHOST_PROGRAM};
    text.insert(text.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& argument : text) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    int out[2];
    if (::pipe(out) != 0) {
        state.SkipWithError("no pipe");
        return -1;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, input_file.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, out[0]);
    posix_spawn_file_actions_addclose(&actions, out[1]);
    const Clock::time_point start = Clock::now();
    pid_t pid = 0;
    const int spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(out[1]);
    if (spawned != 0) {
        ::close(out[0]);
        state.SkipWithError("cannot start qzhost");
        return -1;
    }
    printed = 0;
    char buffer[1 << 16];
    for (ssize_t got; (got = ::read(out[0], buffer, sizeof buffer)) != 0;) {
        if (got > 0) {
            printed += static_cast<std::size_t>(got);
        }
    }
    ::close(out[0]);
    int status = 0;
    rusage usage{};
    ::wait4(pid, &status, 0, &usage);
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    const auto time = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
    };
    cpu = time(usage.ru_utime) + time(usage.ru_stime);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        state.SkipWithError("qzhost inspect failed");
        return -1;
    }
    return seconds;
}

void BM_QzhostEachPointFromStandardInput(benchmark::State& state) {
    const std::string one = TempFile("one-point.txt");
    const std::string many = TempFile("many-points.txt");
    std::ofstream(one) << Points(1);
    std::ofstream(many) << Points(kProgramPoints);
    std::vector<std::string> arguments = {"inspect", "--at", "-", "--prefs",
                                          TempFile("preferences.txt")};
    if (state.range(0) != 0) {
        arguments.push_back("--json");
    }
    MeasureEachFurtherPoint(state, one, many, kProgramPoints,
                            [&](const std::string& input, std::size_t& printed, double& cpu) {
                                return TimedProgram(state, arguments, input, printed, cpu);
                            });
    std::remove(one.c_str());
    std::remove(many.c_str());
}
BENCHMARK(BM_QzhostEachPointFromStandardInput)
    ->ArgName("json")
    ->Arg(0)
    ->Arg(1)
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMicrosecond);

#endif

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    std::remove(TempFile("preferences.txt").c_str());
    return 0;
}
