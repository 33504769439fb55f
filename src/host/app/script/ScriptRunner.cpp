#include "script/ScriptRunner.h"

#include <exception>
#include <istream>
#include <ostream>

#include "qzhost/HostControls.h"
#include "script/Json.h"
#include "script/OpArgs.h"
#include "script/OpTable.h"
#include "script/ScriptErrors.h"
#include "script/ScriptLine.h"
#include "script/ScriptSession.h"
#include "script/Shape.h"

namespace qzhost::script {

namespace {

void WriteLine(std::ostream& out, const Json& object) {
    // Text from the plug-in that is not valid UTF-8 is written with U+FFFD in its place.
    out << object.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
    out.flush();
}

/// The op name of a line for the error object: the "op" string, or null.
Json OpNameOf(const Json& line) {
    if (line.is_object()) {
        auto it = line.find("op");
        if (it != line.end() && it->is_string()) {
            return *it;
        }
    }
    return nullptr;
}

/// Ends the run for a failure of the host: the error object, a diagnostic, shutdown.
int HostFailed(ScriptSession& session, std::ostream& out, std::ostream& err, long line_number,
               const Json& line, const std::string& message) {
    err << "qzhost script: line " << line_number << ": host failure: " << message << '\n';
    Json failure = Json::object();
    failure["op"] = OpNameOf(line);
    failure["error"] = message;
    WriteLine(out, failure);
    session.Shutdown();
    return kExitHostFailure;
}

/// Runs the lines; the session resets the host first and shuts it down at the end.
int RunLines(std::istream& in, std::ostream& out, std::ostream& err,
             const std::string& plugin_path) {
    ScriptSession session(plugin_path);
    const OpTable& ops = ScriptOps();
    std::string text;
    long line_number = 0;
    while (std::getline(in, text)) {
        ++line_number;
        if (IsSkippedLine(text)) {
            continue;
        }
        Json line;
        try {
            line = DecodeScriptLine(text);
            const OpArgs args(line);
            const OpHandler* handler = ops.Find(args.Op());
            if (handler == nullptr) {
                throw ArgumentError("unknown op " + Quoted(args.Op()));
            }
            WriteLine(out, (*handler)(session, args));
        } catch (const ScriptError& error) {
            err << "qzhost script: line " << line_number << ": " << error.what();
            if (!error.Detail().empty()) {
                err << " (" << error.Detail() << ')';
            }
            err << '\n';
            Json failure = Json::object();
            failure["op"] = OpNameOf(line);
            failure["error"] = error.what();
            WriteLine(out, failure);
            session.Shutdown();
            return error.ExitStatus();
        } catch (const std::exception& error) {
            // The host could not carry the op out (an exception from the host runtime or
            // one that the plug-in let escape).
            return HostFailed(session, out, err, line_number, line, error.what());
        } catch (...) {
            return HostFailed(session, out, err, line_number, line,
                              "an exception of unknown type escaped to the host");
        }
    }
    if (in.bad()) {
        err << "qzhost script: reading the script failed after line " << line_number << '\n';
        session.Shutdown();
        return kExitHostFailure;
    }
    session.Shutdown();
    return kExitOk;
}

} // namespace

int RunScript(std::istream& in, std::ostream& out, std::ostream& err,
              const std::string& plugin_path) {
    const int status = RunLines(in, out, err, plugin_path);
    // Breaches of the host's calling contract (such as a [ui-thread] operation called
    // from another thread) do not stop a script, but they are worth a diagnostic.
    for (const std::string& violation : HostControls::Get().Violations()) {
        err << "qzhost script: host contract violation: " << violation << '\n';
    }
    return status;
}

} // namespace qzhost::script
