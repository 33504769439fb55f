// qzview: the reference host's interactive viewer. The images given on the command line
// are read before any window opens; the window opens with those that could be read, and
// each one that could not is reported (one line on standard error here, and in the window).
// SIGTERM and the Quit command end the run cleanly: the plug-in's death hook runs and the
// preference file is written.
#include <array>
#include <csignal>
#include <cstdio>
#include <iostream>
#include <sys/socket.h>
#include <unistd.h>

#include <QApplication>
#include <QSocketNotifier>

#include "ViewerOptions.h"
#include "ViewerSession.h"
#include "qzhost/MainLoop.h"
#include "qzhost/ProgramName.h"

namespace {

int gSignalPipe[2] = {-1, -1};

void OnTerminate(int) {
    const char byte = 1;
    // Only async-signal-safe work here: the event loop reads the pipe.
    (void)!write(gSignalPipe[1], &byte, 1);
}

} // namespace

int main(int argc, char** argv) {
    const qzview::ParsedCommandLine parsed = qzview::ParseCommandLine(argc, argv);
    if (!parsed.options) {
        (parsed.exitStatus == 0 ? std::cout : std::cerr)
            << (parsed.exitStatus == 0 ? "" : "qzview: ") << parsed.message
            << (parsed.exitStatus == 0 ? "" : "\n");
        return parsed.exitStatus;
    }
    const qzview::ViewerOptions& options = *parsed.options;

    qzhost::MainLoop::Get().AdoptCurrentThread();
    qzhost::SetProgramName("qzview");
    std::vector<qzview::LayerImage> images;
    std::vector<std::string> unreadable;
    for (const std::string& path : options.images) {
        try {
            images.push_back(qzview::ReadLayerImage(path));
        } catch (const std::exception& error) {
            std::cerr << "qzview: " << error.what() << '\n';
            unreadable.emplace_back(error.what());
        }
    }

    // Qt is handed the program's name only: the options are the viewer's, and Qt would
    // take some of them for its own (it reads "--plugin" as its "-plugin"). Qt's own
    // settings come from its environment variables (QT_QPA_PLATFORM, QT_SCALE_FACTOR...).
    int qtArgc = 1;
    std::array<char*, 2> qtArgv{argv[0], nullptr};
    QApplication app(qtArgc, qtArgv.data());
    QApplication::setApplicationName(QStringLiteral("qzview"));

    if (socketpair(AF_UNIX, SOCK_STREAM, 0, gSignalPipe) != 0) {
        std::cerr << "qzview: cannot set up the signal handler\n";
        return 1;
    }
    QSocketNotifier notifier(gSignalPipe[0], QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &app, [] {
        char byte = 0;
        (void)!read(gSignalPipe[0], &byte, 1);
        QApplication::closeAllWindows();
    });
    struct sigaction action = {};
    action.sa_handler = OnTerminate;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);

    try {
        qzview::ViewerSession session(options, std::move(images), std::move(unreadable));
        session.Show();
        const int status = QApplication::exec();
        session.Shutdown();
        return status;
    } catch (const std::exception& error) {
        std::cerr << "qzview: " << error.what() << '\n';
        return 2;
    }
}
