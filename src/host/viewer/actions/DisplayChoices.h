// View > Display and View > Display View, and their boxes on the View toolbar with the
// gamma: how the canvas shows working values when a colour config is in use. The displays
// and views are the config's; the one chosen last is kept in the host's preference file
// for each config file, and the command line's --display and --view come before it. A
// display or view that the config does not have gives way to the config's default, and
// FallbackNote says so in one line. Without a config the submenus say how to give one and
// the boxes are not shown.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include <QObject>

#include "qzhost/ColourConfig.h"

class QActionGroup;
class QComboBox;
class QDoubleSpinBox;
class QMenu;
class QWidget;

namespace qzview {

class DisplayChoices : public QObject {
    Q_OBJECT
public:
    /// Adds the two submenus to `menu` and makes the toolbar's boxes for `window`, for
    /// `config` (null: none), starting with `display` and `view` when given, else with
    /// what the preference file keeps for the config, else with its defaults.
    DisplayChoices(QMenu& menu, QWidget& window, std::shared_ptr<const qzhost::ColourConfig> config,
                   const std::optional<std::string>& display,
                   const std::optional<std::string>& view, QObject* parent);

    /// The display and view chosen, with the gamma (exposure 0); empty without a config.
    qzhost::DisplayChoice Choice() const;
    /// What the start had to replace (a display or view that the config does not have),
    /// in one line; empty when nothing.
    const std::string& FallbackNote() const noexcept { return note_; }

    /// The toolbar's boxes: the display, the view and the gamma.
    QComboBox* DisplayBox() const noexcept { return displayBox_; }
    QComboBox* ViewBox() const noexcept { return viewBox_; }
    QDoubleSpinBox* GammaBox() const noexcept { return gamma_; }

    /// Shows `display` with `view` (the display's default view when it has no such view),
    /// as a choice of the person: kept in the preference file.
    void Choose(const std::string& display, const std::string& view);

signals:
    /// The display, the view or the gamma changed.
    void choiceChanged();

private:
    /// Lists the views of the chosen display and checks the chosen ones, in the menus and
    /// the boxes.
    void ShowChoice();

    std::shared_ptr<const qzhost::ColourConfig> config_;
    std::string display_;
    std::string view_;
    std::string note_;
    QMenu* displays_ = nullptr;
    QMenu* views_ = nullptr;
    QActionGroup* displayGroup_ = nullptr;
    QActionGroup* viewGroup_ = nullptr;
    QComboBox* displayBox_ = nullptr;
    QComboBox* viewBox_ = nullptr;
    QDoubleSpinBox* gamma_ = nullptr;
};

} // namespace qzview
