// Paces the viewer's frames: a frame asked for runs from the event loop once a displayed
// frame (16 ms, 60 Hz) has passed since the last one began, and the asks in between are
// one frame.
#pragma once

#include <chrono>

#include <QObject>
#include <QTimer>

namespace qzview {

class FramePacer : public QObject {
    Q_OBJECT
public:
    explicit FramePacer(QObject* parent = nullptr);

    /// A frame is wanted.
    void Schedule();
    /// A frame begins now (when due, or when a caller runs one early); the next is paced
    /// from now.
    void Begin();

signals:
    /// The frame asked for is due.
    void due();

private:
    QTimer timer_;
    std::chrono::steady_clock::time_point last_{};
};

} // namespace qzview
