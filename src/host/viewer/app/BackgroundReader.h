// Reads an image on a worker thread, one at a time. The progress is written into the Info
// panel's text lines from that thread (the panel queues them for the main thread); the
// image, or why it could not be read, is handed back on the main thread.
#pragma once

#include <memory>
#include <string>
#include <thread>

#include <QObject>

#include "composition/LayerImage.h"

struct QZ_InfoPaletteSuite2;

namespace qzview {

class BackgroundReader : public QObject {
    Q_OBJECT
public:
    BackgroundReader() = default;
    /// Waits for a read under way.
    ~BackgroundReader() override;
    BackgroundReader(const BackgroundReader&) = delete;
    BackgroundReader& operator=(const BackgroundReader&) = delete;

    /// Whether a read is under way (until its result is handed back).
    bool Busy() const noexcept { return worker_.joinable(); }
    /// Starts reading `path`, its progress written through `suite`; none may be under way.
    void Start(const std::string& path, const QZ_InfoPaletteSuite2& suite);
    /// Waits until the worker has ended.
    void Wait();

signals:
    /// On the main thread, the worker ended: `image` read, or null and `error` says why.
    void finished(std::shared_ptr<qzview::LayerImage> image, const std::string& error);

private:
    std::thread worker_;
};

} // namespace qzview
