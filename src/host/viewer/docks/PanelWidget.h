// The widget that shows a docked panel: the panel's frame and controls drawn by the host's
// toolkit (Cairo and Pango) into an image kept between repaints, at the host's UI scale.
// What the toolkit marks invalid is drawn again, and only that rectangle is repainted.
#pragma once

#include <memory>

#include <QWidget>

#include "qzhost/ImageCanvas.h"
#include "qzhost/WorkspaceModel.h"

namespace qzview {

class PanelWidget : public QWidget {
    Q_OBJECT
public:
    /// Shows `frame` (which holds the panel) at UI scale `scale` (pixels per unit).
    PanelWidget(qzhost::TabFrame& frame, double scale, QWidget* parent = nullptr);
    ~PanelWidget() override;

    /// Draws what the node tree marked invalid into the kept image and asks Qt to repaint
    /// those rectangles; returns whether there was anything.
    bool Flush();
    /// Draws the whole panel again (after it was hidden, resized or moved to a screen of
    /// another pixel ratio), and follows the panel's minimum size.
    void RedrawAll();
    /// The number of repaints so far.
    std::uint64_t Repaints() const noexcept { return repaints_; }
    /// The image of the panel as last drawn (device pixels).
    QImage Picture() const;

signals:
    /// After each repaint of the panel on the screen.
    void painted();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// The panel's size in units for the widget's size.
    void FollowWidgetSize();
    void FollowMinimumSize();
    QRect ToWidget(const kitui::ui::RectT<float>& units) const;

    qzhost::TabFrame& frame_;
    double scale_;
    std::unique_ptr<qzhost::ImageCanvas> canvas_;
    std::uint64_t repaints_ = 0;
};

} // namespace qzview
