#include "validate/ResultOutput.h"

#include <cmath>
#include <ostream>

#include "script/Json.h"

namespace qzhost::validate {

using script::Json;

namespace {

void WriteJson(std::ostream& out, const Json& object) {
    out << object.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace

void WriteCheckLine(std::ostream& out, const Check& check, const CheckOutcome& outcome, bool json) {
    if (json) {
        Json line{{"check", check.id},
                  {"level", check.level},
                  {"result", outcome.passed ? "pass" : "fail"},
                  {"reason", outcome.reason},
                  {"seconds", std::round(outcome.seconds * 1000) / 1000}};
        line["signal"] = outcome.signal.empty() ? Json(nullptr) : Json(outcome.signal);
        line["timed_out"] = outcome.timedOut;
        WriteJson(out, line);
    } else {
        out << (outcome.passed ? "PASS " : "FAIL ") << check.id << "  " << outcome.reason << '\n';
    }
    out.flush();
}

void WriteSummary(std::ostream& out, const RunSummary& summary, bool json) {
    const int total = summary.passed + summary.failed;
    if (json) {
        WriteJson(out, Json{{"summary",
                             {{"plugin", summary.plugin},
                              {"level", summary.level},
                              {"seed", summary.seed},
                              {"checks", total},
                              {"passed", summary.passed},
                              {"failed", summary.failed}}}});
    } else {
        out << total << " checks at level " << summary.level << " (seed " << summary.seed
            << "): " << summary.passed << " passed, " << summary.failed << " failed\n";
    }
    out.flush();
}

} // namespace qzhost::validate
