#include "app/WindowValues.h"

#include "base/ValueFile.h"

namespace kalvo {

namespace {

enum Place { X, Y, Width, Height, State, Console, TreeWidth, TreeShown, Continuous, Automatic, ImportFolder };

constexpr int kMaximised = 2;
constexpr int kLargest = 32'767; ///< no window writes a number beyond it

int NumberAt(const QStringList& values, Place place, int fallback) {
    bool isNumber = false;
    const int value = values.value(place).toInt(&isNumber);
    return isNumber && value >= -kLargest && value <= kLargest ? value : fallback;
}

int SizeAt(const QStringList& values, Place place, int fallback) {
    const int size = NumberAt(values, place, fallback);
    return size > 0 ? size : fallback;
}

} // namespace

WindowValues WindowValues::Read(const QString& path) {
    const QStringList values = ValueFile::Read(path);
    WindowValues result;
    const QRect stored(NumberAt(values, X, 0), NumberAt(values, Y, 0), NumberAt(values, Width, 0),
                       NumberAt(values, Height, 0));
    result.geometry = stored.isValid() ? stored : QRect();
    result.maximised = NumberAt(values, State, 0) == kMaximised;
    result.consoleHeight = SizeAt(values, Console, result.consoleHeight);
    result.treeWidth = SizeAt(values, TreeWidth, result.treeWidth);
    result.treeShown = NumberAt(values, TreeShown, 0) != 0;
    result.continuous = NumberAt(values, Continuous, 1) != 0;
    result.automatic = NumberAt(values, Automatic, 1) != 0;
    result.importFolder = values.value(ImportFolder);
    return result;
}

bool WindowValues::Write(const QString& path) const {
    return ValueFile::Write(path, {geometry.x(), geometry.y(), geometry.width(), geometry.height(),
                                   maximised ? kMaximised : 0, consoleHeight, treeWidth, treeShown ? 1 : 0,
                                   continuous ? 1 : 0, automatic ? 1 : 0, importFolder});
}

} // namespace kalvo
