#include "archive/ArchiveTree.h"

#include "archive/ArchiveStatements.h"

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

Node CategoryNode(ArchiveField field, const QStringList& values) {
    Node category{CategoryLists::Name(field), CategoryLists::Name(field), u"ordner"_s, {}};
    category.values.reserve(values.size());
    for (qsizetype i = 0; i < values.size(); ++i)
        if (!values.at(i).isEmpty())
            category.values.append({category.key + QString::number(i), values.at(i), u"auswahl"_s, {}});
    return category;
}

} // namespace

std::optional<QList<Node>> Fill(const DataFolder& folder) {
    QList<Node> nodes{
        {kClose, kClose, u"schließen"_s, {}}, {kRebuild, kRebuild, u"aktualisieren"_s, {}}, {{}, u" "_s, {}, {}}};
    for (const ArchiveField field : CategoryLists::kFields) {
        const auto values = CategoryLists::Read(folder, field);
        if (!values)
            return std::nullopt;
        nodes.append(CategoryNode(field, *values));
    }
    return nodes;
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
