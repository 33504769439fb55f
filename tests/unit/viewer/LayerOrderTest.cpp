// The layer list as an editor keeps it: the Project dock lists the top layer first; each
// row's eye hides and shows its layer; Delete takes the selected layer out; a row dragged
// in the dock, Bring Forward and Send Backward move a layer in the stack; the arrow keys
// nudge the selected layer. Each is one step of the history, undone and redone, and after
// each the Info panel shows the composite pixel under the still pointer: the pixel of the
// visible layers, in their order, the full OpenImageIO composite's bit for bit.
#include <cmath>
#include <cstdio>
#include <cstring>

#include <QAction>
#include <QHeaderView>
#include <QTest>

#include "ReferenceComposite.h"
#include "ViewerHarness.h"
#include "docks/LayerPropertiesPanel.h"
#include "docks/ProjectDock.h"
#include "docks/ProjectList.h"
#include "docks/ScrubNumber.h"

namespace qzviewtest {
namespace {

using qzview::Property;
using qzview::WorkingPixel;

class LayerOrderTest : public ViewerHarness {
protected:
    /// Three float layers, bottom to top: a 160 x 120 plate, a 100 x 80 one and a 60 x 40
    /// one (selected), each centred, so that all three lie under the composition's centre;
    /// at zoom 2, with the pointer on composition pixel 83, 57.
    void StartThree() {
        StartWith({Plate("bottom", 160, 120, 51), Plate("middle", 100, 80, 52),
                   Plate("top", 60, 40, 53)});
        Window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
        for (const qzview::Layer& layer : Window().Comp().Layers()) {
            ids_.push_back(layer.id);
        }
        Canvas().ZoomTo(2.0);
        Settle();
        const QPointF at = Canvas().WidgetPointOf({83.5, 57.5});
        MoveTo(static_cast<int>(std::floor(at.x())), static_cast<int>(std::floor(at.y())));
        ASSERT_EQ(Text(Snapshot(), 15), "83");
        ASSERT_EQ(Text(Snapshot(), 16), "57");
    }

    /// The layers' names, bottom first.
    std::vector<std::string> Stack() {
        std::vector<std::string> names;
        for (const qzview::Layer& layer : Window().Comp().Layers()) {
            names.push_back(layer.name);
        }
        return names;
    }

    qzview::ProjectDock& Project() {
        return *static_cast<qzview::ProjectDock*>(Window().ProjectDock());
    }

    /// The Project dock's rows' layer names, as listed (top first).
    std::vector<std::string> Rows() {
        std::vector<std::string> names;
        qzview::ProjectList& list = *Project().List();
        for (int row = 0; row < list.topLevelItemCount(); ++row) {
            const QString text = list.topLevelItem(row)->text(qzview::ProjectList::kTextColumn);
            names.push_back(text.section(' ', 0, 0).toStdString());
        }
        return names;
    }

    QUndoStack& History() { return Window().Editor().History(); }

    /// The pixel that the Info panel shows: the composition's under the pointer, which is
    /// the full OpenImageIO composite's of the visible layers. Returns it.
    WorkingPixel Shown(const std::string& what) {
        SCOPED_TRACE(what);
        const WorkingPixel pixel = Window().Comp().PixelAt(83, 57);
        const OIIO::ImageBuf reference = Reference(Window().Comp());
        float want[4] = {0, 0, 0, 0};
        reference.getpixel(83, 57, want, 4);
        const auto snapshot = Snapshot();
        for (std::size_t c = 0; c < 4; ++c) {
            EXPECT_EQ(std::memcmp(&pixel[c], &want[c], sizeof(float)), 0)
                << "channel " << c << ": " << pixel[c] << " against " << want[c];
            if (c == 3 || pixel[3] != 0.0f) {
                EXPECT_EQ(Text(snapshot, 7 + static_cast<int>(c)), FourDecimals(pixel[c]))
                    << "channel " << c;
            }
        }
        return pixel;
    }

    /// The pixel at 83, 57 of the given layers alone, composited in a composition of
    /// their own (bottom first).
    static WorkingPixel
    Alone(std::initializer_list<std::tuple<const char*, int, int, unsigned>> layers) {
        qzview::Composition composition;
        for (const auto& [name, width, height, seed] : layers) {
            composition.AddImage(Plate(name, width, height, seed));
        }
        return composition.PixelAt(83, 57);
    }

    std::vector<int> ids_;
};

TEST_F(LayerOrderTest, TheProjectDockListsTheTopLayerFirst) {
    StartThree();
    EXPECT_EQ(Stack(), (std::vector<std::string>{"bottom", "middle", "top"}));
    EXPECT_EQ(Rows(), (std::vector<std::string>{"top", "middle", "bottom"}));
    // The selected (newest) layer's row is current: the first.
    EXPECT_EQ(Project().List()->currentIndex().row(), 0);
    Window().Editor().Select(ids_[0]);
    EXPECT_EQ(Project().List()->currentIndex().row(), 2);
}

TEST_F(LayerOrderTest, TheEyeHidesALayerFromTheCompositeAndTheReadoutAsOneStep) {
    StartThree();
    const WorkingPixel all = Shown("all three");
    // The top layer's eye, in the first row.
    qzview::ProjectList& list = *Project().List();
    const QRect eye = list.visualItemRect(list.topLevelItem(0));
    const QPoint onEye(list.header()->sectionPosition(qzview::ProjectList::kEyeColumn) + 8,
                       eye.center().y());
    const int steps = History().count();
    Window().Editor().Select(ids_[1]);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, onEye);
    Settle();
    EXPECT_FALSE(Window().Comp().Find(ids_[2])->visible);
    EXPECT_EQ(Window().Editor().Selected(), ids_[1]) << "the eye does not choose the row";
    EXPECT_EQ(History().count(), steps + 1);
    EXPECT_EQ(History().undoText(), "Hide Layer");
    EXPECT_EQ(list.topLevelItem(0)->data(qzview::ProjectList::kEyeColumn, Qt::UserRole), false);
    const WorkingPixel hidden = Shown("top hidden");
    EXPECT_NE(hidden, all);
    EXPECT_EQ(hidden, Alone({{"bottom", 160, 120, 51}, {"middle", 100, 80, 52}}));
    EXPECT_EQ(Canvas().Scene().snapshot->layers.size(), 2u) << "the canvas draws two layers";

    History().undo();
    Settle();
    EXPECT_TRUE(Window().Comp().Find(ids_[2])->visible);
    EXPECT_EQ(Shown("shown again"), all);
    History().redo();
    Settle();
    EXPECT_EQ(Shown("hidden again"), hidden);
    // Showing it is a step of its own.
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, onEye);
    Settle();
    EXPECT_EQ(History().undoText(), "Show Layer");
    EXPECT_EQ(Shown("shown by its eye"), all);
}

TEST_F(LayerOrderTest, DeleteTakesTheLayerOutAndUndoPutsItBackInItsPlace) {
    StartThree();
    // The middle layer, moved and half transparent, is deleted.
    qzview::LayerEditor& editor = Window().Editor();
    editor.Type(ids_[1], Property::Opacity, {50, 0, 0});
    editor.Type(ids_[1], Property::Position, {78.5, 61, 0});
    Settle();
    const qzview::LayerValues values = Window().Comp().Find(ids_[1])->values;
    const WorkingPixel before = Shown("before the delete");
    editor.Select(ids_[1]);
    Project().List()->setFocus();
    QTest::keyClick(Project().List(), Qt::Key_Delete);
    Settle();
    EXPECT_EQ(Stack(), (std::vector<std::string>{"bottom", "top"}));
    EXPECT_EQ(Rows(), (std::vector<std::string>{"top", "bottom"}));
    EXPECT_EQ(editor.Selected(), 0);
    EXPECT_EQ(History().undoText(), "Delete Layer");
    const WorkingPixel deleted = Shown("deleted");
    EXPECT_EQ(deleted, Alone({{"bottom", 160, 120, 51}, {"top", 60, 40, 53}}));

    History().undo();
    Settle();
    EXPECT_EQ(Stack(), (std::vector<std::string>{"bottom", "middle", "top"}));
    const qzview::Layer* back = Window().Comp().Find(ids_[1]);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->values, values);
    EXPECT_EQ(Window().Comp().Layers().at(1).id, ids_[1]);
    EXPECT_EQ(editor.Selected(), ids_[1]);
    EXPECT_EQ(Shown("put back"), before);

    History().redo();
    Settle();
    EXPECT_EQ(Stack(), (std::vector<std::string>{"bottom", "top"}));
    EXPECT_EQ(Shown("deleted again"), deleted);
}

TEST_F(LayerOrderTest, TheMenusDeleteAndMoveLayersAndTheirKeysWork) {
    StartThree();
    const WorkingPixel before = Shown("before");
    // Ctrl+[ sends the selected top layer one place back.
    QTest::keyClick(&Canvas(), Qt::Key_BracketLeft, Qt::ControlModifier);
    Settle();
    EXPECT_EQ(Stack(), (std::vector<std::string>{"bottom", "top", "middle"}));
    EXPECT_EQ(History().undoText(), "Send Backward");
    EXPECT_EQ(Rows(), (std::vector<std::string>{"middle", "top", "bottom"}));
    const WorkingPixel back = Shown("top sent backward");
    EXPECT_NE(back, before);
    // Ctrl+] brings it forward again.
    QTest::keyClick(&Canvas(), Qt::Key_BracketRight, Qt::ControlModifier);
    Settle();
    EXPECT_EQ(Stack(), (std::vector<std::string>{"bottom", "middle", "top"}));
    EXPECT_EQ(History().undoText(), "Bring Forward");
    EXPECT_EQ(Shown("brought forward"), before);
    History().undo();
    Settle();
    EXPECT_EQ(Shown("undone"), back);
    // The layer on top cannot go further up; the Layer menu's Delete is the Edit menu's.
    History().redo();
    Settle();
    auto* forward = Window().findChild<QAction*>("layer.forward");
    auto* backward = Window().findChild<QAction*>("layer.backward");
    ASSERT_NE(forward, nullptr);
    ASSERT_NE(backward, nullptr);
    EXPECT_FALSE(forward->isEnabled());
    EXPECT_TRUE(backward->isEnabled());
    auto* remove = Window().findChild<QAction*>("edit.delete");
    ASSERT_NE(remove, nullptr);
    remove->trigger();
    Settle();
    EXPECT_EQ(Stack(), (std::vector<std::string>{"bottom", "middle"}));
    EXPECT_FALSE(remove->isEnabled()) << "nothing is selected to delete";
    EXPECT_FALSE(backward->isEnabled());
}

TEST_F(LayerOrderTest, DraggingARowMovesItsLayerInTheStack) {
    StartThree();
    const WorkingPixel before = Shown("before");
    // The top layer's row dropped on the lower half of the bottom layer's row goes to the
    // bottom of the stack.
    qzview::ProjectList& list = *Project().List();
    ASSERT_EQ(list.currentIndex().row(), 0);
    const QRect last = list.visualItemRect(list.topLevelItem(2));
    const QPoint below(last.center().x(), last.bottom() - 2);
    EXPECT_EQ(list.DropRow(0, below), 2);
    // Qt's item view lets only a drag that the list itself started be dropped on it, and
    // a test makes none: the list's report of the drop stands for it (a real drag is
    // what a person makes under a window system).
    emit list.rowMoved(0, list.DropRow(0, below));
    Settle();
    EXPECT_EQ(Stack(), (std::vector<std::string>{"top", "bottom", "middle"}));
    EXPECT_EQ(Rows(), (std::vector<std::string>{"middle", "bottom", "top"}));
    EXPECT_EQ(History().undoText(), "Move Layer");
    const WorkingPixel moved = Shown("top at the bottom");
    EXPECT_NE(moved, before);
    History().undo();
    Settle();
    EXPECT_EQ(Stack(), (std::vector<std::string>{"bottom", "middle", "top"}));
    EXPECT_EQ(Shown("undone"), before);
    History().redo();
    Settle();
    EXPECT_EQ(Shown("redone"), moved);
    // Dropped on the upper half of the first row, the bottom layer's row goes on top.
    Window().Editor().Select(ids_[0]);
    const QRect first = list.visualItemRect(list.topLevelItem(0));
    EXPECT_EQ(list.DropRow(1, QPoint(first.center().x(), first.top() + 2)), 0);
}

TEST_F(LayerOrderTest, ArrowKeysNudgeTheSelectedLayerAndReportItsPosition) {
    StartThree();
    const int top = ids_[2];
    const qzview::PropertyValue start = Window().Comp().Find(top)->values.position;
    ASSERT_EQ(start[0], 80.0);
    ASSERT_EQ(start[1], 60.0);
    const int steps = History().count();
    const int readouts = Window().Readout().Calls();
    Canvas().setFocus();
    QTest::keyClick(&Canvas(), Qt::Key_Right);
    QTest::keyClick(&Canvas(), Qt::Key_Right);
    QTest::keyClick(&Canvas(), Qt::Key_Up);
    QTest::keyClick(&Canvas(), Qt::Key_Down, Qt::ShiftModifier);
    Settle();
    const qzview::PropertyValue& now = Window().Comp().Find(top)->values.position;
    EXPECT_EQ(now[0], 82.0);
    EXPECT_EQ(now[1], 69.0);
    EXPECT_EQ(Window().Readout().Calls(), readouts + 4) << "one readout a nudge";
    EXPECT_EQ(Text(Snapshot(), 21), "Position: 82.0, 69.0");
    std::string delta = Text(Snapshot(), 22);
    delta.erase(0, delta.find_first_not_of(' '));
    EXPECT_EQ(delta, "\u0394: 2.0, 9.0") << "the change since the nudging began";
    EXPECT_EQ(History().count(), steps + 1) << "quick nudges are one step";
    EXPECT_EQ(History().undoText(), "Nudge");
    Shown("after the nudges");
    History().undo();
    Settle();
    EXPECT_EQ(Window().Comp().Find(top)->values.position, start);

    // While a field is being typed into, its arrow keys are its own.
    qzview::ScrubNumber* field = Window().LayerPanel().Field(Property::Position, 0);
    ASSERT_NE(field, nullptr);
    field->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(field->hasFocus());
    QTest::keyClick(field, Qt::Key_Left);
    QTest::keyClick(field, Qt::Key_Down);
    QTest::keyClick(&Window(), Qt::Key_Down);
    Settle();
    EXPECT_EQ(Window().Comp().Find(top)->values.position, start);
}

TEST_F(LayerOrderTest, ANudgeAfterAnotherEditStartsAFreshRun) {
    StartThree();
    const int top = ids_[2];
    Canvas().setFocus();
    QTest::keyClick(&Canvas(), Qt::Key_Left);
    Window().Editor().Type(top, Property::Position, {10, 10, 0});
    QTest::keyClick(&Canvas(), Qt::Key_Left);
    Settle();
    EXPECT_EQ(Window().Comp().Find(top)->values.position[0], 9.0);
    std::string delta = Text(Snapshot(), 22);
    delta.erase(0, delta.find_first_not_of(' '));
    EXPECT_EQ(delta, "\u0394: -1.0, 0.0");
    History().undo();
    EXPECT_EQ(Window().Comp().Find(top)->values.position[0], 10.0);
}

} // namespace
} // namespace qzviewtest
