#include "DisplayChoices.h"

#include <filesystem>

#include <QAction>
#include <QActionGroup>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QMenu>
#include <QSignalBlocker>

#include "qzhost/PreferenceFile.h"

namespace qzview {

namespace {

/// The preference section; its keys name the config file whose choice they keep.
constexpr const char* kDisplaySection = "Viewer Display";

std::string DisplayKey(const qzhost::ColourConfig& config) {
    return "Display: " + std::filesystem::absolute(config.File()).lexically_normal().string();
}

std::string ViewKey(const qzhost::ColourConfig& config) {
    return "View: " + std::filesystem::absolute(config.File()).lexically_normal().string();
}

/// A checkable entry of `menu` for the config's name `name`, in `group`, whose object name
/// is `kind` and the name; an ampersand of the name is shown, not taken for a mnemonic.
QAction* NameItem(QMenu& menu, QActionGroup& group, const char* kind, const std::string& name) {
    QString text = QString::fromStdString(name);
    QAction* item = menu.addAction(text.replace(QLatin1Char('&'), QStringLiteral("&&")));
    item->setObjectName(QLatin1String(kind) + QString::fromStdString(name));
    item->setData(QString::fromStdString(name));
    item->setCheckable(true);
    item->setActionGroup(&group);
    return item;
}

/// Adds an entry to `menu` that says that there is no config, disabled.
void SayNoConfig(QMenu& menu) {
    QAction* none = menu.addAction(QObject::tr("No colour config (--ocio FILE or OCIO)"));
    none->setEnabled(false);
}

} // namespace

DisplayChoices::DisplayChoices(QMenu& menu, QWidget& window,
                               std::shared_ptr<const qzhost::ColourConfig> config,
                               const std::optional<std::string>& display,
                               const std::optional<std::string>& view, QObject* parent)
    : QObject(parent), config_(std::move(config)) {
    displays_ = menu.addMenu(tr("Displa&y"));
    displays_->setObjectName(QStringLiteral("view.display"));
    displays_->setToolTip(tr("The display that the canvas and the swatch are shown for"));
    views_ = menu.addMenu(tr("Display &View"));
    views_->setObjectName(QStringLiteral("view.view"));
    views_->setToolTip(tr("How the display shows the working values"));
    displayGroup_ = new QActionGroup(this);
    viewGroup_ = new QActionGroup(this);

    displayBox_ = new QComboBox(&window);
    displayBox_->setObjectName(QStringLiteral("display"));
    displayBox_->setToolTip(displays_->toolTip());
    viewBox_ = new QComboBox(&window);
    viewBox_->setObjectName(QStringLiteral("view"));
    viewBox_->setToolTip(views_->toolTip());
    viewBox_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    gamma_ = new QDoubleSpinBox(&window);
    gamma_->setObjectName(QStringLiteral("gamma"));
    gamma_->setRange(qzhost::kMinimumGamma, qzhost::kMaximumGamma);
    gamma_->setSingleStep(0.1);
    gamma_->setDecimals(2);
    gamma_->setValue(1.0);
    gamma_->setToolTip(tr("Gamma on the display's values (1: as the view shows them)"));

    if (!config_) {
        SayNoConfig(*displays_);
        SayNoConfig(*views_);
        return;
    }
    for (const std::string& name : config_->Displays()) {
        QAction* item = NameItem(*displays_, *displayGroup_, "view.display.", name);
        connect(item, &QAction::triggered, this, [this, name] { Choose(name, view_); });
        displayBox_->addItem(QString::fromStdString(name));
    }
    connect(displayBox_, &QComboBox::activated, this,
            [this](int index) { Choose(displayBox_->itemText(index).toStdString(), view_); });
    connect(viewBox_, &QComboBox::activated, this,
            [this](int index) { Choose(display_, viewBox_->itemText(index).toStdString()); });
    connect(gamma_, &QDoubleSpinBox::valueChanged, this, &DisplayChoices::choiceChanged);

    // The command line first, then what was kept for this config; a display given alone
    // shows its default view.
    qzhost::DisplayChoice wanted;
    if (display) {
        wanted.display = *display;
        wanted.view = view.value_or("");
    } else {
        wanted.display =
            qzhost::HostTextPreference(kDisplaySection, DisplayKey(*config_)).value_or("");
        wanted.view =
            view ? *view
                 : qzhost::HostTextPreference(kDisplaySection, ViewKey(*config_)).value_or("");
    }
    const qzhost::DisplayChoice resolved = config_->Resolve(wanted, &note_);
    display_ = resolved.display;
    view_ = resolved.view;
    ShowChoice();
}

qzhost::DisplayChoice DisplayChoices::Choice() const {
    if (!config_) {
        return {};
    }
    return {display_, view_, 0.0, gamma_->value()};
}

void DisplayChoices::Choose(const std::string& display, const std::string& view) {
    if (!config_) {
        return;
    }
    // Another display keeps the view when it has one of that name.
    const qzhost::DisplayChoice resolved = config_->Resolve({display, view});
    if (resolved.display == display_ && resolved.view == view_) {
        return;
    }
    display_ = resolved.display;
    view_ = resolved.view;
    // A file that cannot be written keeps the old choice; this run takes the new one.
    (void)qzhost::SetHostTextPreference(kDisplaySection, DisplayKey(*config_), display_);
    (void)qzhost::SetHostTextPreference(kDisplaySection, ViewKey(*config_), view_);
    ShowChoice();
    emit choiceChanged();
}

void DisplayChoices::ShowChoice() {
    for (QAction* item : displayGroup_->actions()) {
        item->setChecked(item->data().toString().toStdString() == display_);
    }
    for (QAction* item : viewGroup_->actions()) {
        viewGroup_->removeAction(item);
        delete item;
    }
    views_->clear();
    const QSignalBlocker quietDisplay(displayBox_);
    const QSignalBlocker quietView(viewBox_);
    displayBox_->setCurrentText(QString::fromStdString(display_));
    viewBox_->clear();
    for (const std::string& name : config_->Views(display_)) {
        QAction* item = NameItem(*views_, *viewGroup_, "view.view.", name);
        item->setChecked(name == view_);
        connect(item, &QAction::triggered, this, [this, name] { Choose(display_, name); });
        viewBox_->addItem(QString::fromStdString(name));
    }
    viewBox_->setCurrentText(QString::fromStdString(view_));
}

} // namespace qzview
