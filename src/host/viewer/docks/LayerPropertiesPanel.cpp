#include "LayerPropertiesPanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include "PanelIcons.h"
#include "ScrubNumber.h"
#include "composition/PropertyRange.h"

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

/// How long the note under the rows stays.
constexpr int kNoteMs = 5000;

/// `from` with component `component` set to `value` and the others of the first
/// `components` scaled in proportion; all take `value` when `from`'s component is 0, from
/// which no proportion follows.
PropertyValue ScaledInProportion(const PropertyValue& from, int component, double value,
                                 int components) {
    PropertyValue scaled = from;
    const double base = from[static_cast<std::size_t>(component)];
    for (int c = 0; c < components; ++c) {
        const auto i = static_cast<std::size_t>(c);
        scaled[i] = c == component ? value : base != 0 ? from[i] * (value / base) : value;
    }
    return scaled;
}

/// A row of `parent`: `label`, then `box` taking the rest of the width.
QWidget* LabelledRow(const QString& label, QComboBox& box, QWidget& parent) {
    auto* row = new QWidget(&parent);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* text = new QLabel(label, row);
    text->setBuddy(&box);
    layout->addWidget(text);
    layout->addWidget(&box, 1);
    return row;
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
    channels_ = new QComboBox(this);
    channels_->setObjectName(QStringLiteral("channelSet"));
    channels_->setToolTip(tr("The channel set of the image that the layer shows and the Info "
                             "panel reads (Page Down, Page Up: the next, the previous)"));
    layout->addWidget(LabelledRow(tr("Channels:"), *channels_, *this));
    connect(channels_, &QComboBox::activated, this, [this](int set) {
        if (layerId_ != 0) {
            emit channelSetChosen(layerId_, set);
        }
    });
    colourSpace_ = new QComboBox(this);
    colourSpace_->setObjectName(QStringLiteral("colourSpace"));
    colourSpace_->setToolTip(tr("The colour space that the image's values are in; they are "
                                "turned into the working space, which the Info panel reads"));
    colourRow_ = LabelledRow(tr("Colour Space:"), *colourSpace_, *this);
    layout->addWidget(colourRow_);
    colourRow_->hide();
    connect(colourSpace_, &QComboBox::activated, this, [this](int index) {
        if (layerId_ != 0) {
            emit colourSpaceChosen(layerId_, colourSpace_->itemText(index));
        }
    });
    rows_ = new QWidget(this);
    grid_ = new QGridLayout(rows_);
    grid_->setContentsMargins(0, 4, 0, 0);
    grid_->setHorizontalSpacing(6);
    layout->addWidget(rows_);
    note_ = new QLabel(this);
    note_->setObjectName(QStringLiteral("propertyNote"));
    note_->setWordWrap(true);
    note_->setStyleSheet(QStringLiteral(
        "QLabel { background-color: #f7dc8f; color: #3a2a00; padding: 3px; border-radius: 3px; }"));
    note_->hide();
    layout->addWidget(note_);
    noteTimer_ = new QTimer(this);
    noteTimer_->setSingleShot(true);
    noteTimer_->setInterval(kNoteMs);
    connect(noteTimer_, &QTimer::timeout, note_, &QWidget::hide);
    layout->addStretch(1);
    ShowLayer(nullptr);
}

void LayerPropertiesPanel::SetColourSpaces(const std::vector<std::string>& spaces) {
    const QSignalBlocker quiet(colourSpace_);
    colourSpace_->clear();
    for (const std::string& space : spaces) {
        colourSpace_->addItem(QString::fromStdString(space));
    }
    colourRow_->setVisible(!spaces.empty());
}

void LayerPropertiesPanel::ShowColourSpace(const Layer* layer) {
    const QSignalBlocker quiet(colourSpace_);
    const bool pixels = layer != nullptr && layer->image != nullptr;
    colourSpace_->setEnabled(pixels);
    colourSpace_->setCurrentIndex(
        pixels ? colourSpace_->findText(QString::fromStdString(layer->image->colourSpace)) : -1);
}

void LayerPropertiesPanel::SetLocale(const QLocale& locale) {
    locale_ = locale;
    for (const auto& [property, fields] : fields_) {
        for (ScrubNumber* field : fields) {
            if (field != nullptr) {
                field->SetLocale(locale_);
            }
        }
    }
}

void LayerPropertiesPanel::ShowNote(const QString& note) {
    note_->setText(note);
    note_->show();
    noteTimer_->start();
    emit noted(note);
}

double LayerPropertiesPanel::Clamped(Property property, double value, ScrubNumber& field) {
    const PropertyRange range = RangeOf(property);
    const double clamped = range.Clamp(value);
    if (clamped == value) {
        return value;
    }
    QString name;
    for (std::size_t i = 0; i < shown_.size() && i < names_.size(); ++i) {
        if (shown_[i] == property) {
            name = QString::fromStdString(names_[i]);
        }
    }
    const auto number = [this](double n) { return locale_.toString(n, 'g', 12); };
    QString note;
    if (range.minimum && range.maximum) {
        note = tr("%1 is from %2 to %3: set to %4")
                   .arg(name, number(*range.minimum), number(*range.maximum), number(clamped));
    } else if (range.minimum) {
        note =
            tr("%1 is at least %2: set to %3").arg(name, number(*range.minimum), number(clamped));
    } else {
        note = tr("%1 is at most %2: set to %3").arg(name, number(*range.maximum), number(clamped));
    }
    field.ShowNote(note);
    ShowNote(note);
    return clamped;
}

ScrubNumber* LayerPropertiesPanel::Field(Property property, int component) const {
    const auto found = fields_.find(property);
    if (found == fields_.end() || component < 0 || component > 2) {
        return nullptr;
    }
    return found->second[static_cast<std::size_t>(component)];
}

PropertyValue LayerPropertiesPanel::With(Property property, int component, double value,
                                         const PropertyValue& from) const {
    if (property == Property::Scale && ScaleLinked(layerId_)) {
        int components = 0;
        for (const ScrubNumber* field : fields_.at(property)) {
            components += field != nullptr ? 1 : 0;
        }
        return ScaledInProportion(from, component, value, components);
    }
    PropertyValue whole = GetProperty(values_, property);
    whole[static_cast<std::size_t>(component)] = value;
    return whole;
}

void LayerPropertiesPanel::Rebuild(const Layer& layer) {
    while (QLayoutItem* item = grid_->takeAt(0)) {
        if (QWidget* widget = item->widget()) {
            // A field going away has nothing more to say (its focus leaving, say).
            widget->blockSignals(true);
            delete widget;
        }
        delete item;
    }
    fields_.clear();
    link_ = nullptr;
    int row = 0;
    for (const Property property : shown_) {
        auto* name = new QLabel(QString::fromStdString(PropertyName(layer, property)), rows_);
        grid_->addWidget(name, row, 0);
        std::array<ScrubNumber*, 3> fields{nullptr, nullptr, nullptr};
        const int components = Components(layer, property);
        for (int c = 0; c < components; ++c) {
            auto* field = new ScrubNumber(1.0, rows_);
            field->setObjectName(QStringLiteral("%1.%2").arg(MatchName(property)).arg(c));
            field->SetLocale(locale_);
            grid_->addWidget(field, row, 1 + c);
            fields[static_cast<std::size_t>(c)] = field;
            connect(field, &ScrubNumber::scrubStarted, this, [this, property] {
                scrubFrom_ = GetProperty(values_, property);
                emit editStarted(layerId_, property);
            });
            // The model keeps a scrubbed value in its property's range.
            connect(field, &ScrubNumber::scrubbed, this, [this, property, c](double value) {
                emit edited(layerId_, property, With(property, c, value, scrubFrom_));
            });
            connect(field, &ScrubNumber::scrubFinished, this,
                    [this, property] { emit editFinished(layerId_, property); });
            connect(field, &ScrubNumber::typed, this, [this, property, c, field](double value) {
                const double kept = Clamped(property, value, *field);
                emit typed(layerId_, property,
                           With(property, c, kept, GetProperty(values_, property)));
            });
        }
        grid_->addWidget(new QLabel(QString::fromUtf8(Unit(property)), rows_), row, 4);
        if (property == Property::Scale) {
            link_ = new QToolButton(rows_);
            link_->setObjectName(QStringLiteral("SCALE.link"));
            link_->setCheckable(true);
            link_->setAutoRaise(true);
            link_->setIcon(LinkIcon());
            link_->setChecked(ScaleLinked(layer.id));
            link_->setToolTip(tr("Link the scale's components: changing one scales the others "
                                 "in proportion"));
            connect(link_, &QToolButton::toggled, this, [this](bool on) {
                if (on) {
                    linked_.insert(layerId_);
                } else {
                    linked_.erase(layerId_);
                }
            });
            grid_->addWidget(link_, row, 5);
        }
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
        channels_->clear();
        channels_->setEnabled(false);
        channelsOf_.reset();
        ShowColourSpace(nullptr);
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
    // The list is made again only for another layer or another set shown, not at every
    // change of the layer's values (a drag's every step).
    const std::pair<int, int> channels{layer->id, layer->image ? layer->image->set : -1};
    if (channelsOf_ != channels) {
        channelsOf_ = channels;
        const QSignalBlocker quiet(channels_);
        channels_->clear();
        if (layer->image) {
            for (const std::string& name : layer->image->SetNames()) {
                channels_->addItem(QString::fromStdString(name));
            }
            channels_->setCurrentIndex(layer->image->set);
        }
        channels_->setEnabled(channels_->count() > 1);
    }
    ShowColourSpace(layer);
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
