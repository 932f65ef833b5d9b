#pragma once

#include "audio/TitleInspection.h"
#include "playback/MeasureStore.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

namespace kalvo {

/** What was found in a file as it was then; no stamp: there was no file. */
struct InspectedTitle {
    FileStamp stamp;
    audio::TitleInspection found;

    bool IsMissing() const { return stamp == FileStamp(); }
    bool operator==(const InspectedTitle&) const = default;
};

/** What the pre-show check has found in titles, by their paths. A value; its file is "\Vorpruefung.json". */
class InspectionStore {
public:
    /** None when the bytes are no such file. Entries that cannot be understood are left out. */
    static std::optional<InspectionStore> FromJson(const QByteArray& bytes);
    QByteArray ToJson() const;

    /** Null when the path was never inspected. Valid until the next Put(). */
    const InspectedTitle* Find(const QString& path) const;
    void Put(const QString& path, const InspectedTitle& title);

private:
    QHash<QString, InspectedTitle> titles_;
};

} // namespace kalvo
