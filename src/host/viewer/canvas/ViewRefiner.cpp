#include "ViewRefiner.h"

#include <algorithm>

#include "canvas/ExactView.h"

namespace qzview {

ViewRefiner::ViewRefiner(Finished finished)
    : finished_(std::move(finished)), worker_([this] { Run(); }) {}

ViewRefiner::~ViewRefiner() {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        stopping_ = true;
        waiting_.reset();
        cancel_ = true;
    }
    wake_.notify_all();
    worker_.join();
}

void ViewRefiner::Start(std::uint64_t request, CanvasScene scene, const CanvasMapping& mapping,
                        int width, int height) {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        waiting_ = Request{request, std::move(scene), mapping, width, height};
        cancel_ = true;
    }
    wake_.notify_all();
}

void ViewRefiner::Cancel() {
    const std::lock_guard<std::mutex> lock(mutex_);
    waiting_.reset();
    cancel_ = true;
}

void ViewRefiner::Run() {
    const int threads = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    for (;;) {
        Request request;
        {
            std::unique_lock<std::mutex> lock(mutex_);
            wake_.wait(lock, [this] { return stopping_ || waiting_.has_value(); });
            if (stopping_) {
                return;
            }
            request = std::move(*waiting_);
            waiting_.reset();
            cancel_ = false;
        }
        QImage view(std::max(1, request.width), std::max(1, request.height), QImage::Format_RGB32);
        if (!RenderExactView(request.scene, request.mapping, view, cancel_, threads)) {
            ++cancelled_;
            continue;
        }
        ++finishedCount_;
        finished_(request.number, std::move(view));
    }
}

} // namespace qzview
