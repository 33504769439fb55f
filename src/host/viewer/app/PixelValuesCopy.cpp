#include "PixelValuesCopy.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>

#include <QClipboard>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeData>

#include "pixelview/DisplayModeChoice.h"
#include "pixelview/PixelViewError.h"
#include "pixelview/PixelViewHost.h"

namespace qzview {

namespace {

using qzhost::pixelview::ControlState;
using qzhost::pixelview::PanelState;

/// The rows of the panel's layout, each a label control beside its value control, by id:
/// the four channels, X and Y, then X' and Y' (shown only while an origin is set).
struct Row {
    std::size_t label;
    std::size_t value;
};
constexpr Row kRows[] = {{3, 7}, {4, 8}, {5, 9}, {6, 10}, {11, 15}, {12, 16}, {13, 17}, {14, 18}};

const ControlState* Shown(const PanelState& panel, std::size_t id) {
    if (id >= panel.controls.size()) {
        return nullptr;
    }
    const ControlState& control = panel.controls[id];
    return control.exists && control.isText && control.visible ? &control : nullptr;
}

/// A float as JSON: the shortest decimal that reads back as the same float (as a double,
/// so that the JSON writer spells it that way too), or a string where JSON has no number.
QJsonValue FloatJson(float value) {
    if (std::isnan(value)) {
        return QStringLiteral("nan");
    }
    if (std::isinf(value)) {
        return value > 0 ? QStringLiteral("inf") : QStringLiteral("-inf");
    }
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text - 1, value);
    *result.ptr = '\0';
    return std::strtod(text, nullptr);
}

QJsonArray PointJson(double x, double y) {
    return QJsonArray{x, y};
}

} // namespace

QString PixelValuesText(const PanelState& panel) {
    QString text;
    for (const Row& row : kRows) {
        const ControlState* label = Shown(panel, row.label);
        const ControlState* value = Shown(panel, row.value);
        if (label == nullptr || value == nullptr) {
            continue;
        }
        QString line = QString::fromStdString(label->text);
        if (!value->text.empty()) {
            line += QLatin1Char(' ') + QString::fromStdString(value->text);
        }
        text += line + QLatin1Char('\n');
    }
    return text;
}

QByteArray PixelValuesJson(const PanelState& panel, const InfoFeed::Delivery& delivered) {
    QJsonObject json;
    json.insert(QStringLiteral("red"), FloatJson(delivered.working[0]));
    json.insert(QStringLiteral("green"), FloatJson(delivered.working[1]));
    json.insert(QStringLiteral("blue"), FloatJson(delivered.working[2]));
    json.insert(QStringLiteral("alpha"), FloatJson(delivered.working[3]));
    if (delivered.displayed) {
        // What the panel shows: the same pixel after the display transform.
        json.insert(QStringLiteral("displayed"),
                    QJsonArray{FloatJson(delivered.pixel[0]), FloatJson(delivered.pixel[1]),
                               FloatJson(delivered.pixel[2]), FloatJson(delivered.pixel[3])});
    }
    json.insert(QStringLiteral("position"), PointJson(delivered.position.x, delivered.position.y));
    json.insert(QStringLiteral("pixel"),
                PointJson(std::floor(delivered.position.x), std::floor(delivered.position.y)));
    if (delivered.origin) {
        json.insert(QStringLiteral("origin"), PointJson(delivered.origin->x, delivered.origin->y));
    }
    if (panel.mode.Present()) {
        const auto mode = static_cast<std::int64_t>(panel.mode.AsNumber());
        json.insert(QStringLiteral("mode"), static_cast<qint64>(mode));
        for (const auto& choice : qzhost::pixelview::DisplayModeChoices()) {
            if (choice.mode == mode) {
                json.insert(QStringLiteral("notation"),
                            QString::fromLatin1(choice.name.data(),
                                                static_cast<qsizetype>(choice.name.size())));
            }
        }
    }
    json.insert(QStringLiteral("sample_size"), delivered.sampleSize);
    json.insert(QStringLiteral("values"),
                delivered.displayed ? QStringLiteral("displayed") : QStringLiteral("working"));
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

bool CopyPixelValues(qzhost::pixelview::PixelViewHost& host, const InfoFeed::Delivery& delivered) {
    PanelState panel;
    try {
        host.Read(panel);
    } catch (const qzhost::pixelview::PixelViewError&) {
        return false; // the panel is closed
    }
    auto mime = std::make_unique<QMimeData>();
    mime->setText(PixelValuesText(panel));
    mime->setData(QStringLiteral("application/json"), PixelValuesJson(panel, delivered));
    QGuiApplication::clipboard()->setMimeData(mime.release());
    return true;
}

} // namespace qzview
