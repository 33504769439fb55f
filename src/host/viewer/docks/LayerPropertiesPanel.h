// The Layer Properties dock's contents: the selected layer's name, its 3-D switch, and a
// row for each of its properties with a scrubbable number per component, as a compositor's
// timeline lists them. Scrubbing, typing and the switch are reported; the window applies
// them to the layer and tells the Info palette. Numbers are shown and read in the host's
// locale. A value beyond the property's range is brought into it, and the field and a
// short-lived note under the rows say so. The Scale row has a link: while it is on, a
// scrub or a typed value of one component scales the others in proportion. With a colour
// config, the layer's input colour space is chosen here too.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <QLocale>
#include <QWidget>

#include "composition/Layer.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QTimer;
class QToolButton;

namespace qzview {

class ScrubNumber;

class LayerPropertiesPanel : public QWidget {
    Q_OBJECT
public:
    explicit LayerPropertiesPanel(QWidget* parent = nullptr);

    /// Shows `layer`'s properties (null: no layer is selected). The rows are built again
    /// only when the layer or its list of properties changed; otherwise the numbers follow.
    void ShowLayer(const Layer* layer);

    /// The number of `component` of `property`, or null when it is not shown.
    ScrubNumber* Field(Property property, int component) const;
    QCheckBox* ThreeDSwitch() const noexcept { return threeD_; }
    /// The Scale row's link, or null when the layer has no scale.
    QToolButton* ScaleLink() const noexcept { return link_; }
    /// The note under the rows (hidden when there is none).
    QLabel* Note() const noexcept { return note_; }

    /// The locale in which the numbers are shown and read.
    void SetLocale(const QLocale& locale);
    /// The colour spaces that an image's values can be in (the colour config's); none
    /// hides the Colour Space box, as without a config.
    void SetColourSpaces(const std::vector<std::string>& spaces);
    /// Whether the components of layer `layer`'s scale are linked.
    bool ScaleLinked(int layer) const { return linked_.count(layer) != 0; }

signals:
    /// A scrub of `property` of layer `layer` began.
    void editStarted(int layer, qzview::Property property);
    /// A scrub step gave `property` the value `value`.
    void edited(int layer, qzview::Property property, qzview::PropertyValue value);
    /// The scrub ended.
    void editFinished(int layer, qzview::Property property);
    /// A typed value: `property` is to become `value`.
    void typed(int layer, qzview::Property property, qzview::PropertyValue value);
    /// The 3-D switch was turned.
    void threeDToggled(int layer, bool on);
    /// Another channel set of the layer's image was chosen (its place in the list).
    void channelSetChosen(int layer, int set);
    /// Another input colour space was chosen for the layer's image.
    void colourSpaceChosen(int layer, const QString& space);
    /// A typed value was brought into its property's range; `note` says so.
    void noted(const QString& note);

private:
    void Rebuild(const Layer& layer);
    /// The property's value with component `component` set to `value`; on a linked
    /// scale, the other components scaled in proportion from `from`.
    PropertyValue With(Property property, int component, double value,
                       const PropertyValue& from) const;
    /// Brings a typed `value` of `property` into its range; says so in `field` and the
    /// note when it had to.
    double Clamped(Property property, double value, ScrubNumber& field);
    void ShowNote(const QString& note);

    QLabel* title_ = nullptr;
    QCheckBox* threeD_ = nullptr;
    QComboBox* channels_ = nullptr;
    /// The layer and the set whose channel sets the Channels box lists.
    std::optional<std::pair<int, int>> channelsOf_;
    QWidget* colourRow_ = nullptr;
    QComboBox* colourSpace_ = nullptr;
    /// Shows the layer's colour space in the Colour Space box (none: no layer with pixels).
    void ShowColourSpace(const Layer* layer);
    QWidget* rows_ = nullptr;
    QGridLayout* grid_ = nullptr;
    int layerId_ = 0;
    /// What the rows were built for: the layer's properties and their names.
    std::vector<Property> shown_;
    std::vector<std::string> names_;
    std::map<Property, std::array<ScrubNumber*, 3>> fields_;
    LayerValues values_;
    QLocale locale_;
    QToolButton* link_ = nullptr;
    /// The layers whose scale components are linked.
    std::set<int> linked_;
    /// The value of the property being scrubbed, as the scrub began.
    PropertyValue scrubFrom_{};
    QLabel* note_ = nullptr;
    QTimer* noteTimer_ = nullptr;
};

} // namespace qzview
