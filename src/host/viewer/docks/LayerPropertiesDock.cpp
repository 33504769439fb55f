#include "LayerPropertiesDock.h"

#include <QScrollArea>

#include "LayerPropertiesPanel.h"

namespace qzview {

LayerPropertiesDock::LayerPropertiesDock(QWidget* parent)
    : QDockWidget(tr("Layer Properties"), parent) {
    setObjectName(QStringLiteral("dock.layers"));
    panel_ = new LayerPropertiesPanel(this);
    panel_->setObjectName(QStringLiteral("layerProperties"));
    auto* scroll = new QScrollArea(this);
    scroll->setWidget(panel_);
    scroll->setWidgetResizable(true);
    setWidget(scroll);
}

} // namespace qzview
