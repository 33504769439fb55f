#include "ViewerSession.h"

#include <cstdio>
#include <stdexcept>

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include "canvas/CanvasView.h"
#include "pixelview/PixelViewError.h"
#include "qzhost/HostControls.h"

namespace qzview {

ViewerSession::ViewerSession(const ViewerOptions& options, std::vector<LayerImage> images,
                             std::vector<std::string> unreadable)
    : geometry_(options.geometry) {
    if (options.logJson) {
        log_ = std::make_unique<EventLog>(stdout);
    }
    qzhost::pixelview::HostSettings settings;
    settings.plugin = options.plugin.empty() ? qzhost::DefaultPluginPath() : options.plugin;
    settings.locale = options.locale;
    const QScreen* screen = QGuiApplication::primaryScreen();
    settings.scale = options.scale.value_or(screen != nullptr ? screen->devicePixelRatio() : 1.0);
    settings.projectDepth = images.empty() ? 0 : images.front().depth;
    settings.prefs = options.prefs;
    settings.monitor = options.monitor;
    settings.openPanel = false;
    try {
        host_ = std::make_unique<qzhost::pixelview::PixelViewHost>(settings);
    } catch (const qzhost::pixelview::PixelViewError& error) {
        throw std::runtime_error(error.what());
    }

    WindowSettings window;
    window.scale = settings.scale;
    window.zoom = options.zoom;
    window.monitor = options.monitor;
    window.locale = options.locale;
    window.colour = options.colour;
    window.display = options.display;
    window.view = options.view;
    window_ = std::make_unique<MainWindow>(*host_, window, log_.get());
    if (!window_->ColourNote().empty()) {
        std::fprintf(stderr, "qzview: warning: %s\n", window_->ColourNote().c_str());
    }
    for (LayerImage& image : images) {
        window_->AddImage(std::move(image));
    }
    window_->RestoreLayout();
    if (geometry_) {
        window_->setGeometry(*geometry_);
    }
    if (!unreadable.empty()) {
        window_->ReportUnreadable(unreadable);
    }
}

ViewerSession::~ViewerSession() {
    Shutdown();
}

void ViewerSession::Show() {
    window_->show();
    if (geometry_) {
        window_->setGeometry(*geometry_);
    }
    // The ready event waits until the window system shows the window, so that its place
    // on the screen is known.
    auto* poll = new QTimer(window_.get());
    poll->setInterval(10);
    QObject::connect(poll, &QTimer::timeout, window_.get(), [this, poll] {
        QWindow* handle = window_->windowHandle();
        if (handle != nullptr && handle->isExposed()) {
            poll->stop();
            poll->deleteLater();
            window_->RunFrame();
            window_->LogReady();
        }
    });
    poll->start();
}

void ViewerSession::Shutdown() {
    if (shutDown_) {
        return;
    }
    shutDown_ = true;
    if (window_) {
        window_->close();
    }
    host_->Shutdown();
    window_.reset();
}

} // namespace qzview
