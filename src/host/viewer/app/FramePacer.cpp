#include "FramePacer.h"

#include <algorithm>

namespace qzview {

namespace {

/// One displayed frame at 60 Hz.
constexpr std::chrono::milliseconds kDisplayedFrame{16};

} // namespace

FramePacer::FramePacer(QObject* parent) : QObject(parent) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &FramePacer::due);
}

void FramePacer::Schedule() {
    if (timer_.isActive()) {
        return;
    }
    const auto since = std::chrono::steady_clock::now() - last_;
    const auto wait = std::max<std::chrono::steady_clock::duration>(
        std::chrono::steady_clock::duration::zero(), kDisplayedFrame - since);
    timer_.start(std::chrono::duration_cast<std::chrono::milliseconds>(wait));
}

void FramePacer::Begin() {
    timer_.stop();
    last_ = std::chrono::steady_clock::now();
}

} // namespace qzview
