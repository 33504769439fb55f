#include "ProjectRows.h"

namespace qzview {

std::vector<ProjectRow> ProjectRows(const Composition& composition) {
    std::vector<ProjectRow> rows;
    for (const Layer& layer : composition.Layers()) {
        if (!layer.Drawn()) {
            rows.push_back(
                {layer.id, QStringLiteral("%1    camera").arg(QString::fromStdString(layer.name))});
            continue;
        }
        const LayerImage& image = *layer.image;
        rows.push_back({layer.id, QStringLiteral("%1    %2 x %3  %4 %5")
                                      .arg(QString::fromStdString(layer.name))
                                      .arg(image.width)
                                      .arg(image.height)
                                      .arg(QString::fromStdString(image.format))
                                      .arg(QString::fromStdString(image.channelType))});
    }
    return rows;
}

int RowOfLayer(const std::vector<ProjectRow>& rows, int layer) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].layer == layer) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

} // namespace qzview
