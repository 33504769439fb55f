// The Layer Properties dock: the selected layer's properties (LayerPropertiesPanel) in a
// scroll area, for the rows that do not fit the dock's height.
#pragma once

#include <QDockWidget>

namespace qzview {

class LayerPropertiesPanel;

class LayerPropertiesDock : public QDockWidget {
    Q_OBJECT
public:
    explicit LayerPropertiesDock(QWidget* parent = nullptr);

    LayerPropertiesPanel& Panel() const noexcept { return *panel_; }

private:
    LayerPropertiesPanel* panel_ = nullptr;
};

} // namespace qzview
