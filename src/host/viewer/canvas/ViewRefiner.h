// Renders the exact view on a worker thread of its own: one render at a time, a new one
// cancelling the one under way (which stops at its next band). The finished view is
// handed to a callback on the worker thread, with the number that its request carried,
// so that the canvas keeps it only if nothing changed meanwhile.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

#include <QImage>

#include "canvas/CanvasMapping.h"
#include "canvas/CanvasScene.h"

namespace qzview {

class ViewRefiner {
public:
    /// Called on the worker thread with the request's number and the view it made.
    using Finished = std::function<void(std::uint64_t request, QImage view)>;

    explicit ViewRefiner(Finished finished);
    /// Cancels any render and waits for the worker to end.
    ~ViewRefiner();
    ViewRefiner(const ViewRefiner&) = delete;
    ViewRefiner& operator=(const ViewRefiner&) = delete;

    /// Renders `scene` as `mapping` places it into a `width` x `height` view, cancelling
    /// any render under way or waiting.
    void Start(std::uint64_t request, CanvasScene scene, const CanvasMapping& mapping, int width,
               int height);
    /// Cancels any render under way or waiting.
    void Cancel();
    /// How many renders were cancelled before they finished (started ones only).
    int Cancelled() const noexcept { return cancelled_.load(); }
    /// How many renders finished.
    int FinishedRenders() const noexcept { return finishedCount_.load(); }

private:
    struct Request {
        std::uint64_t number = 0;
        CanvasScene scene;
        CanvasMapping mapping;
        int width = 0;
        int height = 0;
    };
    void Run();

    Finished finished_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::optional<Request> waiting_;
    bool stopping_ = false;
    std::atomic<bool> cancel_{false};
    std::atomic<int> cancelled_{0};
    std::atomic<int> finishedCount_{0};
    std::thread worker_;
};

} // namespace qzview
