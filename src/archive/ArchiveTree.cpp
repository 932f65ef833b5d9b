#include "archive/ArchiveTree.h"

#include "archive/ArchiveStatements.h"

#include <QStringTokenizer>

namespace kalvo::ArchiveTree {

namespace {

using namespace Qt::StringLiterals;

const QString kClose = u"Schließen"_s;
const QString kRebuild = u"Aktualisieren"_s;

/** Field of a value's key, its category followed by digits; none for other keys. */
std::optional<ArchiveField> FieldOfValue(QStringView key) {
    qsizetype length = key.size();
    while (length > 0 && key[length - 1].isDigit())
        --length;
    return length == key.size() ? std::nullopt : CategoryLists::FieldOf(key.first(length));
}

Branch Category(ArchiveField field, const QString& joined) {
    Branch category{{CategoryLists::Name(field), CategoryLists::Name(field), u"ordner"_s}, joined};
    int index = 0;
    for (const QStringView value : QStringTokenizer(joined, u'\n')) {
        if (!value.isEmpty())
            category.shown.append(
                {index, static_cast<int>(value.begin() - joined.cbegin()), static_cast<int>(value.size())});
        ++index;
    }
    return category;
}

} // namespace

Node Branch::ValueAt(int row) const {
    const Value& value = shown.at(row);
    return {node.key + QString::number(value.index), joined.mid(value.begin, value.length), u"auswahl"_s};
}

std::optional<QList<Branch>> Fill(const DataFolder& folder) {
    QList<Branch> branches{
        {{kClose, kClose, u"schließen"_s}}, {{kRebuild, kRebuild, u"aktualisieren"_s}}, {{{}, u" "_s, {}}}};
    for (const ArchiveField field : CategoryLists::kFields) {
        const auto joined = CategoryLists::ReadJoined(folder, field);
        if (!joined)
            return std::nullopt;
        branches.append(Category(field, *joined));
    }
    return branches;
}

Click ClickOn(QStringView key) {
    if (key == kClose)
        return Click::Close;
    if (key == kRebuild)
        return Click::Rebuild;
    return FieldOfValue(key) ? Click::Value : Click::Nothing;
}

QString Statement(QStringView key, const QString& text) {
    const auto field = FieldOfValue(key);
    return field ? ArchiveStatements::TreeValue(*field, text) : QString();
}

} // namespace kalvo::ArchiveTree
