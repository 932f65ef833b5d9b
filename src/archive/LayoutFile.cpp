#include "archive/LayoutFile.h"

#include "base/ValueFile.h"

#include <cmath>

namespace kalvo {

namespace {

/** A constant that stands in front; its meaning on reading is none. */
constexpr int kFirstValue = 4;

ValueFile::Value NumberValue(double number) {
    if (number == std::floor(number) && std::abs(number) < 1e9)
        return static_cast<int>(number);
    return QString::number(number);
}

double NumberOf(const QString& text) {
    const double number = text.toDouble();
    return std::isfinite(number) && number > 0 ? number : 0;
}

} // namespace

LayoutFile LayoutFile::Read(const QString& path) {
    const QStringList values = ValueFile::Read(path);
    LayoutFile layout;
    for (std::size_t i = 0; i < layout.columnWidths.size(); ++i)
        layout.columnWidths[i] = std::max(0, values.value(static_cast<int>(i) + 1).toInt());
    layout.rowHeight = NumberOf(values.value(9));
    layout.archivePath = values.value(10);
    layout.playlistPath = values.value(11);
    return layout;
}

bool LayoutFile::Write(const QString& path) const {
    QList<ValueFile::Value> values = {kFirstValue};
    for (const int width : columnWidths)
        values.append(width);
    values << NumberValue(rowHeight) << archivePath << playlistPath;
    return ValueFile::Write(path, values);
}

} // namespace kalvo
