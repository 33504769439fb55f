#include "BackgroundReader.h"

#include <exception>
#include <filesystem>

#include "qzgp/QZ_InfoPaletteSuite.h"

namespace qzview {

BackgroundReader::~BackgroundReader() {
    Wait();
}

void BackgroundReader::Wait() {
    if (worker_.joinable()) {
        worker_.join();
    }
}

void BackgroundReader::Start(const std::string& path, const QZ_InfoPaletteSuite2& suite) {
    const std::string name = std::filesystem::path(path).filename().string();
    worker_ = std::thread([this, path, name, suite = &suite] {
        std::shared_ptr<LayerImage> image;
        std::string error;
        int lastTenth = -1;
        try {
            image = std::make_shared<LayerImage>(ReadLayerImage(path, [&](double done) {
                const int tenth = static_cast<int>(done * 10);
                if (tenth != lastTenth) {
                    lastTenth = tenth;
                    // From this thread: the panel queues the lines for the main thread.
                    const std::string progress = "Reading " + std::to_string(tenth * 10) + "%";
                    suite->SetTextLines3(progress.c_str(), name.c_str(), "");
                }
            }));
        } catch (const std::exception& failure) {
            error = failure.what();
        }
        QMetaObject::invokeMethod(
            this,
            [this, image, error] {
                Wait();
                emit finished(image, error);
            },
            Qt::QueuedConnection);
    });
}

} // namespace qzview
