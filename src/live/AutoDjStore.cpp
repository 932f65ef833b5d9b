#include "live/AutoDjStore.h"

#include "archive/CategoryLists.h"
#include "base/AtomicFile.h"
#include "base/FileName.h"
#include "base/SetAside.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kLargestDistance = 1000;
constexpr double kMostHours = 1000;

QJsonObject JsonOf(const AutoDjSelection& selection) {
    return {{u"kriterium"_s, CategoryLists::Name(selection.field)},
            {u"werte"_s, QJsonArray::fromStringList(selection.values)},
            {u"stunden"_s, selection.hours},
            {u"beideListen"_s, selection.bothLists},
            {u"interpretAbstand"_s, selection.rules.artistDistance},
            {u"heuteGespielteAuslassen"_s, selection.rules.skipPlayedToday},
            {u"andereFassungenAuslassen"_s, selection.rules.skipOtherVersions}};
}

/** Missing and impossible values get their defaults. */
AutoDjSelection SelectionOf(const QJsonObject& json) {
    AutoDjSelection selection;
    selection.field = CategoryLists::FieldOf(json.value(u"kriterium"_s).toString()).value_or(selection.field);
    const QJsonArray values = json.value(u"werte"_s).toArray();
    for (const QJsonValue value : values) {
        if (!value.toString().isEmpty())
            selection.values.append(value.toString());
    }
    selection.hours = std::clamp(json.value(u"stunden"_s).toDouble(selection.hours), 0.0, kMostHours);
    selection.bothLists = json.value(u"beideListen"_s).toBool();
    selection.rules.artistDistance = std::clamp(json.value(u"interpretAbstand"_s).toInt(), 0, kLargestDistance);
    selection.rules.skipPlayedToday = json.value(u"heuteGespielteAuslassen"_s).toBool();
    selection.rules.skipOtherVersions = json.value(u"andereFassungenAuslassen"_s).toBool();
    return selection;
}

bool IsNamed(const NamedSelection& named, const QString& name) {
    return named.name.compare(name, Qt::CaseInsensitive) == 0;
}

} // namespace

QString AutoDjStore::Load(const Clock& clock) {
    QFile file(path_);
    mayWrite_ = true;
    if (!file.exists())
        return {};
    if (!file.open(QIODevice::ReadOnly)) {
        mayWrite_ = false;
        return u"%1 kann nicht gelesen werden."_s.arg(FileName::Last(path_));
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    file.close();
    if (!document.isObject()) {
        const QString kept = SetAside(path_, clock);
        mayWrite_ = !kept.isEmpty();
        return u"%1 war beschädigt, die Auswahlen des Auto DJ sind leer. Die alte Datei liegt unter %2"_s.arg(
            FileName::Last(path_), mayWrite_ ? kept : path_);
    }
    const QJsonArray saved = document[u"auswahlen"_s].toArray();
    for (const QJsonValue one : saved) {
        if (const QString name = one[u"name"_s].toString().trimmed(); !name.isEmpty())
            Put({name, SelectionOf(one.toObject())});
    }
    last = SelectionOf(document[u"zuletzt"_s].toObject());
    const QJsonObject refilling = document[u"nachfuellen"_s].toObject();
    refill.isOn = refilling.value(u"an"_s).toBool();
    refill.below = std::clamp(refilling.value(u"unter"_s).toInt(refill.below), 1, 99);
    refill.selection = SelectionOf(refilling);
    return {};
}

bool AutoDjStore::Save() const {
    QJsonArray saved;
    for (const NamedSelection& named : saved_) {
        QJsonObject one = JsonOf(named.selection);
        one.insert(u"name"_s, named.name);
        saved.append(one);
    }
    QJsonObject refilling = JsonOf(refill.selection);
    refilling.insert(u"an"_s, refill.isOn);
    refilling.insert(u"unter"_s, refill.below);
    const QJsonObject all{{u"auswahlen"_s, saved}, {u"zuletzt"_s, JsonOf(last)}, {u"nachfuellen"_s, refilling}};
    return mayWrite_ && WriteAtomically(path_, QJsonDocument(all).toJson());
}

const AutoDjSelection* AutoDjStore::Find(const QString& name) const {
    const auto found = std::find_if(saved_.begin(), saved_.end(),
                                    [&name](const NamedSelection& named) { return IsNamed(named, name); });
    return found == saved_.end() ? nullptr : &found->selection;
}

void AutoDjStore::Put(const NamedSelection& named) {
    Remove(named.name);
    const auto place = std::find_if(saved_.begin(), saved_.end(), [&named](const NamedSelection& other) {
        return other.name.compare(named.name, Qt::CaseInsensitive) > 0;
    });
    saved_.insert(place, named);
}

void AutoDjStore::Remove(const QString& name) {
    saved_.removeIf([&name](const NamedSelection& named) { return IsNamed(named, name); });
}

} // namespace kalvo
