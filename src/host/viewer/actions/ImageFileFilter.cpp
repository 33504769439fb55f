#include "ImageFileFilter.h"

#include <QCoreApplication>

namespace qzview {

QStringList ImageFileFilters(const std::vector<qzhost::pixelview::ImageFormat>& formats) {
    QStringList all;
    QStringList each;
    for (const qzhost::pixelview::ImageFormat& format : formats) {
        QStringList patterns;
        for (const std::string& extension : format.extensions) {
            const QString pattern = QStringLiteral("*.") + QString::fromStdString(extension);
            patterns << pattern;
            if (!all.contains(pattern)) {
                all << pattern;
            }
        }
        if (!patterns.isEmpty()) {
            each << QStringLiteral("%1 (%2)").arg(QString::fromStdString(format.name),
                                                  patterns.join(QLatin1Char(' ')));
        }
    }
    each.sort(Qt::CaseInsensitive);
    QStringList filters;
    if (!all.isEmpty()) {
        filters << QCoreApplication::translate("qzview::ImageFileFilter", "Images (%1)")
                       .arg(all.join(QLatin1Char(' ')));
    }
    filters << each;
    filters << QCoreApplication::translate("qzview::ImageFileFilter", "All files (*)");
    return filters;
}

} // namespace qzview
