#include "LayerPropertiesPanel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "ScrubNumber.h"

namespace qzview {

namespace {

const char* Unit(Property property) {
    switch (property) {
    case Property::Scale:
    case Property::Opacity:
    case Property::MaskOpacity:
        return "%";
    case Property::Orientation:
    case Property::RotationX:
    case Property::RotationY:
    case Property::Rotation:
        return "°";
    case Property::MaskFeather:
    case Property::MaskExpansion:
    case Property::Zoom:
        return "px";
    default:
        return "";
    }
}

} // namespace

LayerPropertiesPanel::LayerPropertiesPanel(QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    title_ = new QLabel(this);
    title_->setObjectName(QStringLiteral("layerTitle"));
    QFont bold = title_->font();
    bold.setBold(true);
    title_->setFont(bold);
    layout->addWidget(title_);
    threeD_ = new QCheckBox(tr("3D Layer"), this);
    threeD_->setObjectName(QStringLiteral("threeD"));
    threeD_->setToolTip(tr("Gives the layer depth: three-component anchor point, position and "
                           "scale, orientation and X, Y and Z rotation"));
    connect(threeD_, &QCheckBox::toggled, this, [this](bool on) {
        if (layerId_ != 0) {
            emit threeDToggled(layerId_, on);
        }
    });
    layout->addWidget(threeD_);
    rows_ = new QWidget(this);
    grid_ = new QGridLayout(rows_);
    grid_->setContentsMargins(0, 4, 0, 0);
    grid_->setHorizontalSpacing(6);
    layout->addWidget(rows_);
    layout->addStretch(1);
    ShowLayer(nullptr);
}

ScrubNumber* LayerPropertiesPanel::Field(Property property, int component) const {
    const auto found = fields_.find(property);
    if (found == fields_.end() || component < 0 || component > 2) {
        return nullptr;
    }
    return found->second[static_cast<std::size_t>(component)];
}

PropertyValue LayerPropertiesPanel::With(Property property, int component, double value) const {
    PropertyValue whole = GetProperty(values_, property);
    whole[static_cast<std::size_t>(component)] = value;
    return whole;
}

void LayerPropertiesPanel::Rebuild(const Layer& layer) {
    while (QLayoutItem* item = grid_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    fields_.clear();
    int row = 0;
    for (const Property property : shown_) {
        auto* name = new QLabel(QString::fromStdString(PropertyName(layer, property)), rows_);
        grid_->addWidget(name, row, 0);
        std::array<ScrubNumber*, 3> fields{nullptr, nullptr, nullptr};
        const int components = Components(layer, property);
        for (int c = 0; c < components; ++c) {
            auto* field = new ScrubNumber(1.0, rows_);
            field->setObjectName(QStringLiteral("%1.%2").arg(MatchName(property)).arg(c));
            grid_->addWidget(field, row, 1 + c);
            fields[static_cast<std::size_t>(c)] = field;
            connect(field, &ScrubNumber::scrubStarted, this,
                    [this, property] { emit editStarted(layerId_, property); });
            connect(field, &ScrubNumber::scrubbed, this, [this, property, c](double value) {
                emit edited(layerId_, property, With(property, c, value));
            });
            connect(field, &ScrubNumber::scrubFinished, this,
                    [this, property] { emit editFinished(layerId_, property); });
            connect(field, &ScrubNumber::typed, this, [this, property, c](double value) {
                emit typed(layerId_, property, With(property, c, value));
            });
        }
        grid_->addWidget(new QLabel(QString::fromUtf8(Unit(property)), rows_), row, 4);
        fields_[property] = fields;
        ++row;
    }
}

void LayerPropertiesPanel::ShowLayer(const Layer* layer) {
    if (layer == nullptr) {
        layerId_ = 0;
        shown_.clear();
        names_.clear();
        Rebuild(Layer{});
        title_->setText(tr("No layer selected"));
        const QSignalBlocker quiet(threeD_);
        threeD_->setChecked(false);
        threeD_->setEnabled(false);
        return;
    }
    std::vector<Property> properties = PropertiesOf(*layer);
    std::vector<std::string> names;
    for (const Property property : properties) {
        names.push_back(PropertyName(*layer, property));
    }
    values_ = layer->values;
    if (layer->id != layerId_ || properties != shown_ || names != names_) {
        layerId_ = layer->id;
        shown_ = std::move(properties);
        names_ = std::move(names);
        Rebuild(*layer);
    }
    title_->setText(QString::fromStdString(layer->name));
    {
        const QSignalBlocker quiet(threeD_);
        threeD_->setEnabled(layer->kind == LayerKind::Visual);
        threeD_->setChecked(layer->ThreeD());
    }
    for (const auto& [property, fields] : fields_) {
        const PropertyValue value = GetProperty(layer->values, property);
        for (std::size_t c = 0; c < fields.size(); ++c) {
            if (fields[c] != nullptr) {
                fields[c]->SetValue(value[c]);
            }
        }
    }
}

} // namespace qzview
