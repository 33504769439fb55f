#include "qzhost/MainLoop.h"

#include <exception>

#include "host/U_Exceptions.h"
#include "qzhost/HostControls.h"

namespace qzhost {

MainLoop& MainLoop::Get() {
    static MainLoop loop;
    return loop;
}

// The thread that first reaches the loop (the one that loads the host) is the main
// thread until a program says otherwise.
MainLoop::MainLoop() : main_(std::this_thread::get_id()) {}

void MainLoop::AdoptCurrentThread() {
    std::lock_guard lock(mutex_);
    main_ = std::this_thread::get_id();
}

bool MainLoop::IsMainThread() const {
    return std::this_thread::get_id() == main_.load(std::memory_order_acquire);
}

void MainLoop::Post(boost::function<void()> call) {
    std::function<void()> wake;
    {
        std::lock_guard lock(mutex_);
        queue_.push_back(std::move(call));
        wake = wake_;
    }
    if (wake) {
        wake();
    }
}

void MainLoop::SetWakeup(std::function<void()> wake) {
    std::lock_guard lock(mutex_);
    wake_ = std::move(wake);
}

DrainResult MainLoop::Drain() {
    DrainResult result;
    for (;;) {
        boost::function<void()> call;
        {
            std::lock_guard lock(mutex_);
            if (queue_.empty()) {
                break;
            }
            call = std::move(queue_.front());
            queue_.pop_front();
        }
        ++result.ran;
        try {
            if (call) {
                call();
            }
        } catch (QZ_Err code) {
            result.thrown.push_back(code);
        } catch (const std::exception& error) {
            result.thrown.push_back(U_TranslateAndReportException(error));
        } catch (...) {
            // Nothing that a queued call throws may take the host down.
            result.thrown.push_back(QZ_Err_GENERIC);
            HostControls::Get().RecordViolation("a queued call threw a value of unknown type");
        }
    }
    return result;
}

std::size_t MainLoop::Pending() const {
    std::lock_guard lock(mutex_);
    return queue_.size();
}

void MainLoop::Discard() {
    std::deque<boost::function<void()>> dropped;
    std::lock_guard lock(mutex_);
    dropped.swap(queue_);
}

} // namespace qzhost
