#include "SampleChoices.h"

#include <charconv>
#include <optional>
#include <string>

#include <QAction>
#include <QActionGroup>
#include <QMenu>

#include "pixelview/AreaSample.h"
#include "qzhost/PreferenceFile.h"

namespace qzview {

namespace {

/// The preference section and its keys.
constexpr const char* kSamplingSection = "Viewer Sampling";
constexpr const char* kSizeKey = "Sample Size";
constexpr const char* kValuesKey = "Sample Values";
constexpr const char* kWorking = "working";
constexpr const char* kDisplayed = "displayed";

/// The stored size when it is one of the sizes offered; 1 otherwise.
int StoredSize() {
    const std::optional<std::string> text = qzhost::HostTextPreference(kSamplingSection, kSizeKey);
    if (!text) {
        return 1;
    }
    int size = 0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), size);
    if (error != std::errc() || end != text->data() + text->size()) {
        return 1;
    }
    for (int offered : qzhost::pixelview::kSampleSizes) {
        if (offered == size) {
            return size;
        }
    }
    return 1;
}

bool StoredDisplayed() {
    return qzhost::HostTextPreference(kSamplingSection, kValuesKey) ==
           std::optional<std::string>(kDisplayed);
}

} // namespace

SampleChoices::SampleChoices(QMenu& menu, QObject* parent)
    : QObject(parent), size_(StoredSize()), displayed_(StoredDisplayed()) {
    QMenu* sizes = menu.addMenu(tr("Sa&mple Size"));
    sizes->setObjectName(QStringLiteral("view.sampleSize"));
    auto* sizeGroup = new QActionGroup(this);
    for (int size : qzhost::pixelview::kSampleSizes) {
        QAction* item =
            sizes->addAction(QString::fromStdString(qzhost::pixelview::SampleSizeName(size)));
        item->setObjectName(QStringLiteral("view.sampleSize.%1").arg(size));
        item->setCheckable(true);
        item->setChecked(size == size_);
        item->setActionGroup(sizeGroup);
        item->setToolTip(size == 1 ? tr("The Info panel shows the pixel under the pointer")
                                   : tr("The Info panel shows the mean of the %1 x %1 pixels "
                                        "around the pointer")
                                         .arg(size));
        connect(item, &QAction::triggered, this, [this, size] { ChooseSize(size); });
    }

    QMenu* values = menu.addMenu(tr("Sample &Values"));
    values->setObjectName(QStringLiteral("view.sampleValues"));
    auto* valueGroup = new QActionGroup(this);
    for (const bool displayed : {false, true}) {
        QAction* item = values->addAction(displayed ? tr("&Displayed") : tr("&Working"));
        item->setObjectName(displayed ? QStringLiteral("view.sampleValues.displayed")
                                      : QStringLiteral("view.sampleValues.working"));
        item->setCheckable(true);
        item->setChecked(displayed == displayed_);
        item->setActionGroup(valueGroup);
        item->setToolTip(displayed ? tr("The Info panel shows the values as the canvas shows "
                                        "them: after the exposure and the display transform")
                                   : tr("The Info panel shows the composition's working values"));
        connect(item, &QAction::triggered, this, [this, displayed] { ChooseValues(displayed); });
    }
}

void SampleChoices::ChooseSize(int size) {
    if (size == size_) {
        return;
    }
    size_ = size;
    // A file that cannot be written keeps the old choice; this run takes the new one.
    (void)qzhost::SetHostTextPreference(kSamplingSection, kSizeKey, std::to_string(size));
    emit sizeChosen(size);
}

void SampleChoices::ChooseValues(bool displayed) {
    if (displayed == displayed_) {
        return;
    }
    displayed_ = displayed;
    (void)qzhost::SetHostTextPreference(kSamplingSection, kValuesKey,
                                        displayed ? kDisplayed : kWorking);
    emit valuesChosen(displayed);
}

} // namespace qzview
