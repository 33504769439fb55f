// Typing into the Layer Properties dock as a person does: a value is set on Enter, on Tab
// and when the field loses the focus, each one step of the history with its readout;
// Escape puts the value back. Numbers are shown and read in the host's locale. A value
// beyond the property's range is brought into it and the field, the note under the rows
// and the status bar say so; text that is not a number turns the field red and changes
// nothing. The Scale row's link scales the other components in proportion.
#include <QLabel>
#include <QStatusBar>
#include <QTest>
#include <QToolButton>

#include "ViewerHarness.h"
#include "composition/PropertyRange.h"
#include "docks/LayerPropertiesPanel.h"
#include "docks/ScrubNumber.h"

namespace qzviewtest {
namespace {

using qzview::Property;

class PropertyFieldTest : public ViewerHarness {
protected:
    /// Starts on the chart (240 x 160, its position 120, 80) in the host's `locale`.
    void StartIn(const char* locale = "en_US") {
        qzview::ViewerOptions options = TestOptions();
        options.locale = locale;
        options.images.push_back(Sample("chart.png"));
        std::vector<qzview::LayerImage> layers;
        layers.push_back(qzview::ReadLayerImage(options.images.back()));
        Launch(options, std::move(layers));
        Window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
        Canvas().ZoomTo(1.0);
        Settle();
    }

    const qzview::Layer& Chart() { return Window().Comp().Layers().at(0); }
    qzview::ScrubNumber& Field(Property property, int component) {
        qzview::ScrubNumber* field = Window().LayerPanel().Field(property, component);
        EXPECT_NE(field, nullptr);
        return *field;
    }
    int Steps() { return Window().Editor().History().count(); }
    std::string Line(int row) { return Text(Snapshot(), 20 + row); }

    /// Gives `field` the focus and types `text` over what it shows, key by key.
    void TypeInto(qzview::ScrubNumber& field, const QString& text) {
        field.setFocus(Qt::TabFocusReason);
        ASSERT_TRUE(field.hasFocus());
        field.selectAll();
        QTest::keyClicks(&field, text);
    }
};

TEST_F(PropertyFieldTest, EnterSetsTheTypedValueAsOneStepWithItsReadout) {
    StartIn();
    qzview::ScrubNumber& x = Field(Property::Position, 0);
    const int steps = Steps();
    const int readouts = Window().Readout().Calls();
    TypeInto(x, "130.5");
    EXPECT_EQ(Chart().values.position[0], 120.0) << "nothing is set while typing";
    QTest::keyClick(&x, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Chart().values.position[0], 130.5);
    EXPECT_EQ(x.text(), "130.5");
    EXPECT_EQ(Steps(), steps + 1);
    EXPECT_EQ(Window().Editor().History().undoText(), "Change Position");
    EXPECT_EQ(Window().Readout().Calls(), readouts + 1);
    EXPECT_EQ(Line(1), "Position: 130.5, 80.0");
    Window().Editor().History().undo();
    Settle();
    EXPECT_EQ(Chart().values.position[0], 120.0);
    EXPECT_EQ(x.text(), "120.0");
}

TEST_F(PropertyFieldTest, TabSetsTheTypedValueAndGoesToTheNextComponent) {
    StartIn();
    qzview::ScrubNumber& x = Field(Property::Position, 0);
    const int steps = Steps();
    TypeInto(x, "101");
    QTest::keyClick(&x, Qt::Key_Tab);
    Settle();
    EXPECT_EQ(Chart().values.position[0], 101.0);
    EXPECT_EQ(Steps(), steps + 1);
    EXPECT_TRUE(Field(Property::Position, 1).hasFocus());
    EXPECT_EQ(x.text(), "101.0");
}

TEST_F(PropertyFieldTest, LeavingTheFieldSetsTheTypedValue) {
    StartIn();
    qzview::ScrubNumber& rotation = Field(Property::Rotation, 0);
    const int steps = Steps();
    TypeInto(rotation, "45");
    Canvas().setFocus(Qt::MouseFocusReason);
    Settle();
    EXPECT_EQ(Chart().values.rotation, 45.0);
    EXPECT_EQ(Steps(), steps + 1);
    EXPECT_EQ(Line(1), "Rotation: 45.0\u00b0");
    // Coming back and leaving again without typing sets nothing more.
    rotation.setFocus(Qt::TabFocusReason);
    Canvas().setFocus(Qt::MouseFocusReason);
    Settle();
    EXPECT_EQ(Steps(), steps + 1);
}

TEST_F(PropertyFieldTest, EscapePutsTheValueBackAndSetsNothing) {
    StartIn();
    qzview::ScrubNumber& y = Field(Property::Position, 1);
    const int steps = Steps();
    const int readouts = Window().Readout().Calls();
    TypeInto(y, "77");
    QTest::keyClick(&y, Qt::Key_Escape);
    Settle();
    EXPECT_EQ(y.text(), "80.0");
    EXPECT_FALSE(y.hasFocus());
    // The focus has gone: nothing typed is left to be set by it.
    Canvas().setFocus(Qt::MouseFocusReason);
    Settle();
    EXPECT_EQ(Chart().values.position[1], 80.0);
    EXPECT_EQ(Steps(), steps);
    EXPECT_EQ(Window().Readout().Calls(), readouts);
}

TEST_F(PropertyFieldTest, GermanNumbersAreShownAndReadWithADecimalComma) {
    StartIn("de_DE");
    qzview::ScrubNumber& x = Field(Property::Position, 0);
    EXPECT_EQ(x.text(), "120,0");
    TypeInto(x, "130,5");
    QTest::keyClick(&x, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Chart().values.position[0], 130.5);
    EXPECT_EQ(x.text(), "130,5");
    // A dot is a group separator in German, not a decimal point: "1.305" is refused
    // rather than read as 1305.
    TypeInto(x, "1.305");
    QTest::keyClick(&x, Qt::Key_Return);
    Settle();
    EXPECT_TRUE(x.Invalid());
    EXPECT_EQ(Chart().values.position[0], 130.5);
    EXPECT_TRUE(x.toolTip().contains("12,5")) << x.toolTip().toStdString();
}

TEST_F(PropertyFieldTest, EnglishNumbersAreShownWithADecimalPoint) {
    StartIn("en_US");
    qzview::ScrubNumber& x = Field(Property::Position, 0);
    Window().Editor().Type(Chart().id, Property::Position, {130.5, 80, 0});
    Settle();
    EXPECT_EQ(x.text(), "130.5");
    EXPECT_EQ(x.Read("130,5"), std::nullopt);
    EXPECT_EQ(x.Read(" 99.5 % "), 99.5) << "the property's unit may follow the number";
}

TEST_F(PropertyFieldTest, AValueBeyondTheRangeIsClampedAndTheFieldSaysSo) {
    StartIn();
    qzview::ScrubNumber& opacity = Field(Property::Opacity, 0);
    const QString note = "Opacity is from 0 to 100: set to 100";
    EXPECT_FALSE(Window().LayerPanel().Note()->isVisible());
    TypeInto(opacity, "150");
    QTest::keyClick(&opacity, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Chart().values.opacity, 100.0);
    EXPECT_EQ(opacity.text(), "100.0");
    EXPECT_TRUE(opacity.Noted());
    EXPECT_EQ(opacity.toolTip(), note);
    EXPECT_TRUE(Window().LayerPanel().Note()->isVisible());
    EXPECT_EQ(Window().LayerPanel().Note()->text(), note);
    EXPECT_EQ(Window().statusBar()->currentMessage(), note);
    // Editing the field again ends its note.
    QTest::keyClick(&opacity, Qt::Key_Backspace);
    EXPECT_FALSE(opacity.Noted());

    Window().Editor().AddMask();
    Settle();
    qzview::ScrubNumber& feather = Field(Property::MaskFeather, 0);
    TypeInto(feather, "-5");
    QTest::keyClick(&feather, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Chart().values.mask->feather, 0.0);
    EXPECT_EQ(feather.toolTip(), "Mask Feather is at least 0: set to 0");
    EXPECT_EQ(Line(1), "Feather: 0.0");
}

TEST_F(PropertyFieldTest, TextThatIsNotANumberTurnsTheFieldRedAndChangesNothing) {
    StartIn();
    qzview::ScrubNumber& x = Field(Property::Position, 0);
    const int steps = Steps();
    TypeInto(x, "12a");
    QTest::keyClick(&x, Qt::Key_Return);
    Settle();
    EXPECT_TRUE(x.Invalid());
    EXPECT_EQ(x.text(), "12a") << "the text stays to be put right";
    EXPECT_TRUE(x.styleSheet().contains("background-color")) << "the field is coloured";
    EXPECT_TRUE(x.toolTip().startsWith("\"12a\" is not a number")) << x.toolTip().toStdString();
    EXPECT_EQ(Chart().values.position[0], 120.0);
    EXPECT_EQ(Steps(), steps);
    // Leaving the field leaves it red and the value as it was.
    Canvas().setFocus(Qt::MouseFocusReason);
    Settle();
    EXPECT_TRUE(x.Invalid());
    EXPECT_EQ(x.text(), "12a");
    EXPECT_EQ(Chart().values.position[0], 120.0);
    // Putting the text right clears the red before it is set.
    x.setFocus(Qt::TabFocusReason);
    x.end(false);
    QTest::keyClick(&x, Qt::Key_Backspace);
    EXPECT_FALSE(x.Invalid());
    EXPECT_TRUE(x.styleSheet().isEmpty());
    QTest::keyClick(&x, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Chart().values.position[0], 12.0);
    EXPECT_EQ(Steps(), steps + 1);
}

TEST_F(PropertyFieldTest, LinkedScaleScalesTheOtherComponentsInProportion) {
    StartIn();
    Window().Editor().Type(Chart().id, Property::Scale, {100, 50, 100});
    Settle();
    QToolButton* link = Window().LayerPanel().ScaleLink();
    ASSERT_NE(link, nullptr);
    EXPECT_FALSE(link->isChecked());
    link->click();
    EXPECT_TRUE(Window().LayerPanel().ScaleLinked(Chart().id));
    const int steps = Steps();
    qzview::ScrubNumber& x = Field(Property::Scale, 0);
    TypeInto(x, "200");
    QTest::keyClick(&x, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Chart().values.scale[0], 200.0);
    EXPECT_EQ(Chart().values.scale[1], 100.0);
    EXPECT_EQ(Field(Property::Scale, 1).text(), "100.0");
    EXPECT_EQ(Steps(), steps + 1);
    EXPECT_EQ(Line(1), "Scale: 200%, 100%");

    // A scrub of Y: twenty pixels from 100 % to 120 %, X from 200 % to 240 %, one step.
    qzview::ScrubNumber& y = Field(Property::Scale, 1);
    const QPoint middle(y.width() / 2, y.height() / 2);
    QTest::mousePress(&y, Qt::LeftButton, Qt::NoModifier, middle);
    for (int i = 1; i <= 20; ++i) {
        QTest::mouseMove(&y, middle + QPoint(i, 0));
    }
    QTest::mouseRelease(&y, Qt::LeftButton, Qt::NoModifier, middle + QPoint(20, 0));
    Settle();
    EXPECT_EQ(Chart().values.scale[1], 120.0);
    EXPECT_EQ(Chart().values.scale[0], 240.0);
    EXPECT_EQ(Steps(), steps + 2);
    Window().Editor().History().undo();
    EXPECT_EQ(Chart().values.scale[0], 200.0);
    EXPECT_EQ(Chart().values.scale[1], 100.0);

    // Unlinked, a component changes alone.
    link->click();
    TypeInto(x, "50");
    QTest::keyClick(&x, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Chart().values.scale[0], 50.0);
    EXPECT_EQ(Chart().values.scale[1], 100.0);
}

TEST_F(PropertyFieldTest, TheDocksRangesAreTheModelsRanges) {
    // What the dock says it clamped to is what the layer model keeps.
    qzview::LayerValues values;
    values.mask = qzview::RectMask{0, 0, 10, 10};
    for (const Property property :
         {Property::Opacity, Property::MaskOpacity, Property::MaskFeather, Property::MaskExpansion,
          Property::Rotation, Property::RotationX}) {
        const qzview::PropertyRange range = qzview::RangeOf(property);
        for (const double typed : {-1e6, -0.5, 50.0, 150.0, 1e6}) {
            qzview::SetProperty(values, property, {typed, 0, 0});
            EXPECT_EQ(qzview::GetProperty(values, property)[0], range.Clamp(typed))
                << qzview::MatchName(property) << " given " << typed;
        }
    }
}

} // namespace
} // namespace qzviewtest
