// The Layer Properties dock's contents: the selected layer's name, its 3-D switch, and a
// row for each of its properties with a scrubbable number per component, as a compositor's
// timeline lists them. Scrubbing, typing and the switch are reported; the window applies
// them to the layer and tells the Info palette.
#pragma once

#include <array>
#include <map>
#include <vector>

#include <QWidget>

#include "composition/Layer.h"

class QCheckBox;
class QGridLayout;
class QLabel;

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

private:
    void Rebuild(const Layer& layer);
    /// The property's value with component `component` set to `value`.
    PropertyValue With(Property property, int component, double value) const;

    QLabel* title_ = nullptr;
    QCheckBox* threeD_ = nullptr;
    QWidget* rows_ = nullptr;
    QGridLayout* grid_ = nullptr;
    int layerId_ = 0;
    /// What the rows were built for: the layer's properties and their names.
    std::vector<Property> shown_;
    std::vector<std::string> names_;
    std::map<Property, std::array<ScrubNumber*, 3>> fields_;
    LayerValues values_;
};

} // namespace qzview
