#include "archive/ui/TypeAhead.h"

#include "archive/Archive.h"
#include "archive/TextFolding.h"

#include <QGuiApplication>
#include <QStyleHints>

namespace kalvo {

namespace {

std::string KeyOf(const QString& text) {
    return TextFolding::SortKey(TextFolding::Folded(text));
}

int FirstRowBeginningWith(const Archive& archive, const RecordOrder& order, const std::string& begin) {
    const auto keyAt = [&](int row) { return KeyOf(FieldText(archive.RowAt(row), order.field)); };
    int low = 0;
    int high = archive.RowCount();
    while (low < high) {
        const int middle = low + (high - low) / 2;
        // Only as much of the key as was typed decides: equal means "begins with it".
        const int compared = keyAt(middle).compare(0, begin.size(), begin);
        if (order.descending ? compared > 0 : compared < 0)
            low = middle + 1;
        else
            high = middle;
    }
    return low < archive.RowCount() && keyAt(low).starts_with(begin) ? low : -1;
}

} // namespace

bool TypeAhead::IsTyping() const {
    return last_.isValid() && last_.elapsed() < QGuiApplication::styleHints()->keyboardInputInterval();
}

int TypeAhead::Type(const QString& letters) {
    if (!IsTyping())
        word_.clear();
    word_ += letters;
    last_.start();
    const auto source = ParseRecordSource(archive_.CurrentRecordSource());
    if (!source || source->order.isEmpty())
        return -1;
    return FirstRowBeginningWith(archive_, source->order.first(), KeyOf(word_));
}

} // namespace kalvo
