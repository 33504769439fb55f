#include "ProjectRows.h"

namespace qzview {

std::vector<ProjectRow> ProjectRows(const Composition& composition) {
    std::vector<ProjectRow> rows;
    const std::vector<Layer>& layers = composition.Layers();
    for (auto it = layers.rbegin(); it != layers.rend(); ++it) {
        const Layer& layer = *it;
        if (!layer.HasPixels()) {
            rows.push_back({layer.id,
                            QStringLiteral("%1    camera").arg(QString::fromStdString(layer.name)),
                            false, layer.visible});
            continue;
        }
        const LayerImage& image = *layer.image;
        rows.push_back({layer.id,
                        QStringLiteral("%1    %2 x %3  %4 %5")
                            .arg(QString::fromStdString(layer.name))
                            .arg(image.frameWidth)
                            .arg(image.frameHeight)
                            .arg(QString::fromStdString(image.format))
                            .arg(QString::fromStdString(image.channelType)),
                        true, layer.visible});
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
