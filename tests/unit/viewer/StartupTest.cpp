// Starting with files that cannot be read: the window opens with those that could be, and
// each unreadable one is reported once, in the Info panel's alert line and in a message
// that does not block the window. The Open dialog offers the formats the reader reads.
#include <cstdio>

#include <QMessageBox>

#include "ViewerHarness.h"
#include "actions/ImageFileFilter.h"
#include "composition/LayerImage.h"

namespace qzviewtest {
namespace {

class StartupTest : public ViewerHarness {};

TEST_F(StartupTest, UnreadableFilesAreReportedAndTheOthersOpen) {
    std::vector<qzview::LayerImage> layers;
    layers.push_back(qzview::ReadLayerImage(Sample("chart.png")));
    std::vector<std::string> errors;
    std::FILE* text = std::fopen((folder_.Path() / "notimage.png").string().c_str(), "w");
    ASSERT_NE(text, nullptr);
    std::fputs("not an image\n", text);
    std::fclose(text);
    for (const std::string& path :
         {(folder_.Path() / "notimage.png").string(), (folder_.Path() / "missing.exr").string()}) {
        try {
            qzview::ReadLayerImage(path);
            ADD_FAILURE() << path << " was read";
        } catch (const std::exception& error) {
            errors.emplace_back(error.what());
        }
    }
    Launch(TestOptions(), std::move(layers), errors);

    EXPECT_EQ(Window().Comp().Layers().size(), 1u);
    const auto snapshot = Snapshot();
    EXPECT_EQ(snapshot.at("lines")[0], "Cannot read 2 images");
    EXPECT_EQ(snapshot.at("controls").at(20).value("color", std::string()), "alert");
    const auto boxes = Window().findChildren<QMessageBox*>("readError");
    ASSERT_EQ(boxes.size(), 1);
    QMessageBox* box = boxes.front();
    EXPECT_EQ(box->windowModality(), Qt::NonModal);
    const QString sentences = box->informativeText();
    for (const char* name : {"notimage.png", "missing.exr"}) {
        EXPECT_EQ(sentences.count(QString::fromLatin1(name)), 1) << name;
    }
    EXPECT_TRUE(sentences.startsWith(QLatin1Char('C'))) << sentences.toStdString();
    // The image that was read is there to look at: the pointer reads it.
    Canvas().ZoomCentred(1.0);
    Settle();
    MoveTo(Canvas().Mapping().OriginX() + 45, Canvas().Mapping().OriginY() + 85);
    EXPECT_EQ(Text(Snapshot(), 15), "45");
    EXPECT_EQ(Snapshot().at("lines")[1], "chart.png");
}

TEST(ImageFileFilterTest, TheOpenDialogOffersTheReadersFormatsThenAllFiles) {
    const QStringList filters = qzview::ImageFileFilters(qzhost::pixelview::ReadableImageFormats());
    ASSERT_GE(filters.size(), 3);
    EXPECT_TRUE(filters.front().startsWith("Images ("));
    for (const char* pattern : {"*.exr", "*.png", "*.tif", "*.jpg"}) {
        EXPECT_TRUE(filters.front().contains(QString::fromLatin1(pattern))) << pattern;
    }
    EXPECT_FALSE(filters.front().contains("*.txt"));
    EXPECT_TRUE(filters.contains("openexr (*.exr *.sxr *.mxr)"));
    EXPECT_EQ(filters.back(), "All files (*)");
}

} // namespace
} // namespace qzviewtest
