// Images as compositors write them, in the viewer: a frame with the pixels at a rectangle
// of their own (transparent around them, readable beyond the frame), and several channel
// sets of which a layer shows one, chosen in the View menu, with Page Down and Page Up, or
// in the Layer Properties dock.
#include <QAction>
#include <QComboBox>
#include <QMenu>

#include <OpenImageIO/imageio.h>

#include "ExrTestFiles.h"
#include "ViewerHarness.h"
#include "actions/ViewActions.h"
#include "composition/Composition.h"
#include "editing/LayerEditor.h"

namespace qzviewtest {
namespace {

using qzview::WorkingPixel;

using qztest::ExrPart;
using qztest::ExrSample;

/// A part of `channels`, its pixels `width` x `height` at `x0`, `y0` in a frame of
/// `frame_width` x `frame_height` at 0,0.
ExrPart Part(std::vector<std::string> channels, int x0, int y0, int width, int height,
             int frame_width, int frame_height) {
    return {std::move(channels), x0, y0, width, height, 0, 0, frame_width, frame_height, {}};
}

void Write(const std::string& path, const ExrPart& part) {
    ASSERT_EQ(qztest::WriteExr(path, {part}), "");
}

class ChannelSetTest : public ViewerHarness {
protected:
    std::string File(const char* name) const { return (folder_.Path() / name).string(); }

    QAction* ViewAction(const char* name) {
        for (auto* set : Window().findChildren<qzview::ViewActions*>()) {
            if (QAction* action = set->actions().value(QString::fromLatin1(name))) {
                return action;
            }
        }
        return nullptr;
    }
    /// The entries of View > Channels that name sets, and the checked one.
    std::vector<std::string> MenuSets(std::string* checked = nullptr) {
        std::vector<std::string> names;
        auto* menu = Window().findChild<QMenu*>("channelsMenu");
        EXPECT_NE(menu, nullptr);
        for (QAction* action : menu->actions()) {
            if (action->isCheckable()) {
                names.push_back(action->text().toStdString());
                if (checked != nullptr && action->isChecked()) {
                    *checked = names.back();
                }
            }
        }
        return names;
    }
    const qzview::Layer& Top() { return Window().Comp().Layers().back(); }
};

TEST_F(ChannelSetTest, TheCompositionIsTheFrameAndAroundThePixelsIsTransparent) {
    const std::string path = File("framed.exr");
    const ExrPart framed = Part({"R", "G", "B", "A"}, 10, 20, 64, 48, 100, 80);
    Write(path, framed);
    StartWith({qzview::ReadLayerImage(path)});
    const qzview::Composition& comp = Window().Comp();
    EXPECT_EQ(comp.Width(), 100);
    EXPECT_EQ(comp.Height(), 80);
    // The frame's centre is the layer's anchor: the frame covers the composition exactly.
    EXPECT_EQ(Top().values.anchor, (qzview::PropertyValue{50, 40, 0}));
    EXPECT_EQ(comp.PixelAt(5, 5), (WorkingPixel{0, 0, 0, 0}));
    EXPECT_EQ(comp.PixelAt(74, 20), (WorkingPixel{0, 0, 0, 0}));
    EXPECT_EQ(comp.PixelAt(10, 20),
              (WorkingPixel{ExrSample(framed, 10, 20, "R"), ExrSample(framed, 10, 20, "G"),
                            ExrSample(framed, 10, 20, "B"), ExrSample(framed, 10, 20, "A")}));
    EXPECT_EQ(comp.PixelAt(73, 67)[0], ExrSample(framed, 73, 67, "R"));
    // The panel reads the same at the pointer, X and Y in the frame.
    MoveOver(Over(10.5, 20.5));
    const auto snapshot = Snapshot();
    EXPECT_EQ(Text(snapshot, 7), FourDecimals(ExrSample(framed, 10, 20, "R")));
    EXPECT_EQ(Text(snapshot, 15), "10");
    EXPECT_EQ(Text(snapshot, 16), "20");
}

TEST_F(ChannelSetTest, PixelsBeyondTheFrameAreReadWhereTheLayerLiesOverTheComposition) {
    const std::string base = File("base.exr");
    const std::string overscan = File("overscan.exr");
    Write(base, qztest::FilledPart({"R", "G", "B", "A"}, 100, 80));
    // Pixels 4 beyond a 32 x 22 frame on every side.
    const ExrPart beyond = Part({"R", "G", "B"}, -4, -4, 40, 30, 32, 22);
    Write(overscan, beyond);
    StartWith({qzview::ReadLayerImage(base), qzview::ReadLayerImage(overscan)});
    // Centred by its frame: the frame's corner lies at 34, 29, its pixel -4, -4 at 30, 25.
    const WorkingPixel corner = Window().Comp().PixelAt(30, 25);
    EXPECT_EQ(corner, (WorkingPixel{ExrSample(beyond, -4, -4, "R"), ExrSample(beyond, -4, -4, "G"),
                                    ExrSample(beyond, -4, -4, "B"), 1.0f}));
    // Its handles and hit test follow the frame.
    EXPECT_EQ(Window().Comp().LayerAt(34.5, 29.5), &Top());
    EXPECT_EQ(Window().Comp().LayerAt(30.5, 25.5), &Window().Comp().Layers().front());
}

TEST_F(ChannelSetTest, TheViewMenuListsTheSetsAndPageDownStepsThroughThem) {
    const std::string path = File("aov.exr");
    const ExrPart aov = qztest::FilledPart(
        {"R", "G", "B", "A", "diffuse.R", "diffuse.G", "diffuse.B", "Z"}, 16, 12);
    Write(path, aov);
    StartWith({qzview::ReadLayerImage(path)});
    std::string checked;
    EXPECT_EQ(MenuSets(&checked), (std::vector<std::string>{"RGBA", "diffuse", "Z"}));
    EXPECT_EQ(checked, "RGBA");
    EXPECT_EQ(Window().Comp().PixelAt(3, 2)[0], ExrSample(aov, 3, 2, "R"));
    MoveOver(Over(3.5, 2.5));

    QAction* next = ViewAction("NextChannels");
    ASSERT_NE(next, nullptr);
    EXPECT_EQ(next->shortcut(), QKeySequence(Qt::Key_PageDown));
    next->trigger();
    Settle();
    EXPECT_EQ(Top().image->setName, "diffuse");
    // The prefix has no alpha of its own: it takes the image's.
    EXPECT_EQ(Window().Comp().PixelAt(3, 2),
              (WorkingPixel{ExrSample(aov, 3, 2, "diffuse.R"), ExrSample(aov, 3, 2, "diffuse.G"),
                            ExrSample(aov, 3, 2, "diffuse.B"), ExrSample(aov, 3, 2, "A")}));
    // The panel reads it at once under the still pointer, and the lines name it.
    EXPECT_EQ(Text(Snapshot(), 7), FourDecimals(ExrSample(aov, 3, 2, "diffuse.R")));
    EXPECT_EQ(Lines().at(1), "aov.exr [diffuse]");
    MenuSets(&checked);
    EXPECT_EQ(checked, "diffuse");
    auto* combo = Window().findChild<QComboBox*>("channelSet");
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(combo->currentText().toStdString(), "diffuse");

    next->trigger();
    Settle();
    // A lone channel is grey with alpha 1.
    const float z = ExrSample(aov, 3, 2, "Z");
    EXPECT_EQ(Window().Comp().PixelAt(3, 2), (WorkingPixel{z, z, z, 1.0f}));
    // Going round: the next after the last is the first; Page Up goes back.
    next->trigger();
    Settle();
    EXPECT_EQ(Top().image->setName, "RGBA");
    ViewAction("PreviousChannels")->trigger();
    Settle();
    EXPECT_EQ(Top().image->setName, "Z");
}

TEST_F(ChannelSetTest, AChoiceInTheDockOrTheMenuIsOneStepOfTheHistory) {
    const std::string path = File("aov.exr");
    const ExrPart aov = qztest::FilledPart(
        {"R", "G", "B", "A", "diffuse.R", "diffuse.G", "diffuse.B", "Z"}, 16, 12);
    Write(path, aov);
    StartWith({qzview::ReadLayerImage(path)});
    auto* combo = Window().findChild<QComboBox*>("channelSet");
    ASSERT_NE(combo, nullptr);
    EXPECT_TRUE(combo->isEnabled());
    EXPECT_EQ(combo->count(), 3);
    combo->setCurrentIndex(2);
    emit combo->activated(2);
    Settle();
    EXPECT_EQ(Top().image->setName, "Z");
    EXPECT_EQ(Window().Editor().History().undoText().toStdString(), "Channels: Z");
    Window().Editor().History().undo();
    Settle();
    EXPECT_EQ(Top().image->setName, "RGBA");
    EXPECT_EQ(combo->currentText().toStdString(), "RGBA");
    EXPECT_EQ(Window().Comp().PixelAt(3, 2)[3], ExrSample(aov, 3, 2, "A"));
}

TEST_F(ChannelSetTest, APartOfAMultiPartFileShowsItsOwnPixelsAtTheirPlace) {
    const std::string path = File("parts.exr");
    OIIO::ImageSpec beauty(20, 10, 4, OIIO::TypeDesc::HALF);
    beauty.channelnames = {"R", "G", "B", "A"};
    beauty.attribute("oiio:subimagename", "beauty");
    // The second part's pixels cover 6 x 4 at 8, 3 of the same 20 x 10 frame.
    OIIO::ImageSpec matte(6, 4, 1, OIIO::TypeDesc::HALF);
    matte.x = 8;
    matte.y = 3;
    matte.full_width = 20;
    matte.full_height = 10;
    matte.channelnames = {"Y"};
    matte.attribute("oiio:subimagename", "matte");
    {
        auto out = OIIO::ImageOutput::create(path);
        const OIIO::ImageSpec parts[] = {beauty, matte};
        ASSERT_TRUE(out && out->open(path, 2, parts)) << OIIO::geterror();
        std::vector<float> ones(20 * 10 * 4, 1.0f);
        ASSERT_TRUE(out->write_image(OIIO::TypeDesc::FLOAT, ones.data()));
        ASSERT_TRUE(out->open(path, matte, OIIO::ImageOutput::AppendSubimage)) << out->geterror();
        std::vector<float> quarter(6 * 4, 0.25f);
        ASSERT_TRUE(out->write_image(OIIO::TypeDesc::FLOAT, quarter.data()));
        ASSERT_TRUE(out->close());
    }
    StartWith({qzview::ReadLayerImage(path)});
    EXPECT_EQ(MenuSets(), (std::vector<std::string>{"beauty", "matte"}));
    ViewAction("NextChannels")->trigger();
    Settle();
    const qzview::Composition& comp = Window().Comp();
    // Grey with its part's own alpha (none: 1), at the part's rectangle; nothing around it.
    EXPECT_EQ(comp.PixelAt(8, 3), (WorkingPixel{0.25f, 0.25f, 0.25f, 1.0f}));
    EXPECT_EQ(comp.PixelAt(13, 6), (WorkingPixel{0.25f, 0.25f, 0.25f, 1.0f}));
    EXPECT_EQ(comp.PixelAt(7, 3), (WorkingPixel{0, 0, 0, 0}));
    EXPECT_EQ(comp.PixelAt(14, 6), (WorkingPixel{0, 0, 0, 0}));
    EXPECT_EQ(Top().image->width, 6);
}

TEST_F(ChannelSetTest, AnImageOfOneSetOffersNoOther) {
    Start({"chart.exr"});
    std::string checked;
    EXPECT_EQ(MenuSets(&checked), (std::vector<std::string>{"RGBA"}));
    EXPECT_FALSE(ViewAction("NextChannels")->isEnabled());
    EXPECT_FALSE(Window().findChild<QComboBox*>("channelSet")->isEnabled());
}

} // namespace
} // namespace qzviewtest
