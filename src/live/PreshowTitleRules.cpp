// What the pre-show check says about the titles of both lists.

#include "base/FileName.h"
#include "base/PlayTime.h"
#include "live/PreshowRules.h"
#include "live/TitleVersion.h"
#include "playback/MeasuredTitle.h"
#include "playlists/ListCaption.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace kalvo::Preshow {

namespace {

using namespace Qt::StringLiterals;

// Seconds.
constexpr double kSilentStart = 3;
constexpr double kSilentEnd = 6;
constexpr double kSilentGap = 3;
constexpr double kLengthSlack = 3;
constexpr double kLengthShare = 0.02; ///< of the length
// Loudness.
constexpr double kUnlike = 8;  ///< LU from the middle of all titles
constexpr double kFaint = -35; ///< LUFS, where there are too few others to compare with
constexpr std::size_t kFewTitles = 3;
constexpr int kClipped = 20; ///< places of a title

/** An entry with its place, and what is known of its file. */
struct Judged {
    int list = 0;
    int row = 0;
    const PlaylistEntry* entry = nullptr;
    const InspectedTitle* known = nullptr; ///< null: not looked at yet

    QString Name() const {
        const QString name = entry->title.isEmpty() ? FileName::Last(entry->path) : entry->title;
        return entry->artist.isEmpty() ? name : entry->artist + u" - "_s + name;
    }
    QString Where() const { return u"Liste %1, %2. %3"_s.arg(list).arg(row + 1).arg(Name()); }
    PreshowTarget Target() const { return {PreshowTarget::Place::Entry, list, entry->id, {}}; }
    bool IsPlayable() const { return known != nullptr && !known->IsMissing() && known->found.decoded > 0; }
};

using Titles = std::vector<Judged>;

Titles AllTitles(const PreshowFacts& facts, const PreshowAnswers& answers) {
    Titles titles;
    for (std::size_t list = 0; list < facts.lists.size(); ++list) {
        for (const PreshowEntry& place : facts.lists.at(list)) {
            const auto known = answers.titles.constFind(place.entry.path);
            titles.push_back({static_cast<int>(list) + 1, place.row, &place.entry,
                              known == answers.titles.constEnd() ? nullptr : &known.value()});
        }
    }
    return titles;
}

QString Seconds(double seconds) {
    return u"%1 s"_s.arg(std::lround(seconds));
}

/** The length that the title should have: its own header's, else the list's; 0 when nothing tells it. */
double ToldLength(const Judged& title) {
    const double told = title.known->found.told;
    return std::max(told, static_cast<double>(DurationSeconds(title.entry->duration)));
}

bool IsCut(const Judged& title) {
    const double told = ToldLength(title);
    const double slack = std::max(kLengthSlack, told * kLengthShare);
    return title.known->found.broken || title.known->found.decoded < told - slack;
}

class TitleFindings {
public:
    void Error(const Judged& title, const QString& text) { Add(PreshowSeverity::Error, title, text); }
    void Hint(const Judged& title, const QString& text) { Add(PreshowSeverity::Hint, title, text); }
    QList<PreshowFinding> Take() { return std::move(all_); }

private:
    void Add(PreshowSeverity severity, const Judged& title, const QString& text) {
        all_.append({severity, title.Where(), text, title.Target()});
    }
    QList<PreshowFinding> all_;
};

void JudgeFile(const Judged& title, TitleFindings& findings) {
    if (title.known->IsMissing()) {
        findings.Error(title, u"Die Datei fehlt: %1"_s.arg(title.entry->path));
    } else if (title.known->found.decoded <= 0) {
        findings.Error(title, u"Die Datei kann nicht abgespielt werden: %1"_s.arg(title.entry->path));
    } else if (title.known->found.IsSilent()) {
        findings.Error(title, u"Der Titel ist ganz still."_s);
    } else if (IsCut(title)) {
        findings.Error(title, u"Der Titel bricht nach %1 ab, er sollte %2 lang sein."_s.arg(
                                  PlayTime::Format(title.known->found.decoded), PlayTime::Format(ToldLength(title))));
    }
}

void JudgeSilence(const Judged& title, TitleFindings& findings) {
    const audio::TitleInspection& found = title.known->found;
    if (found.silenceAtStart > kSilentStart)
        findings.Hint(title, u"Der Titel beginnt mit %1 Stille."_s.arg(Seconds(found.silenceAtStart)));
    if (found.silenceAtEnd > kSilentEnd)
        findings.Hint(title, u"Der Titel endet mit %1 Stille."_s.arg(Seconds(found.silenceAtEnd)));
    if (found.longestGap > kSilentGap)
        findings.Hint(title, u"Nach %1 ist der Titel %2 lang still."_s.arg(PlayTime::Format(found.gapAt),
                                                                           Seconds(found.longestGap)));
}

void JudgeLength(const Judged& title, const MixerOptions& mixing, TitleFindings& findings) {
    const bool fades = mixing.continuous && mixing.automatic && mixing.mode == FadeMode::FadeCrossOver;
    if (fades && title.known->found.decoded <= mixing.switchOver)
        findings.Hint(title, u"Der Titel ist mit %1 kürzer als die Umschaltzeit von %2 s."_s
                                 .arg(Seconds(title.known->found.decoded))
                                 .arg(mixing.switchOver));
}

double LoudnessOnAir(const Judged& title, bool levelling) {
    const audio::TitleMeasures& measures = title.known->found.measures;
    return measures.loudness + (levelling ? LevellingGain(measures) : 0);
}

/** Of the titles that sound; NaN when they are too few to be compared. */
double MiddleLoudness(const Titles& titles, bool levelling) {
    std::vector<double> all;
    for (const Judged& title : titles) {
        if (title.IsPlayable() && !title.known->found.IsSilent())
            all.push_back(LoudnessOnAir(title, levelling));
    }
    if (all.size() < kFewTitles)
        return std::nan("");
    const auto middle = all.begin() + static_cast<std::ptrdiff_t>(all.size() / 2);
    std::nth_element(all.begin(), middle, all.end());
    return *middle;
}

void JudgeLoudness(const Judged& title, double loudness, double middle, TitleFindings& findings) {
    const double off = loudness - middle; // NaN compares false
    if (off < -kUnlike || (std::isnan(middle) && loudness < kFaint))
        findings.Hint(title, std::isnan(middle)
                                 ? u"Der Titel ist sehr leise (%1 LUFS)."_s.arg(std::lround(loudness))
                                 : u"Der Titel ist %1 LU leiser als die anderen."_s.arg(std::lround(-off)));
    else if (off > kUnlike)
        findings.Hint(title, u"Der Titel ist %1 LU lauter als die anderen."_s.arg(std::lround(off)));
    if (title.known->found.clippedRuns >= kClipped)
        findings.Hint(title, u"Der Titel ist an %1 Stellen übersteuert."_s.arg(title.known->found.clippedRuns));
}

void JudgeEach(const Titles& titles, const PreshowFacts& facts, TitleFindings& findings) {
    const double middle = MiddleLoudness(titles, facts.levelling);
    for (const Judged& title : titles) {
        if (title.known == nullptr)
            continue;
        JudgeFile(title, findings);
        if (!title.IsPlayable() || title.known->found.IsSilent())
            continue;
        JudgeSilence(title, findings);
        JudgeLength(title, facts.mixing, findings);
        JudgeLoudness(title, LoudnessOnAir(title, facts.levelling), middle, findings);
    }
}

void JudgeDoubles(const Titles& titles, TitleFindings& findings) {
    QHash<QString, const Judged*> paths;
    QHash<QString, const Judged*> versions;
    for (const Judged& title : titles) {
        const QString version =
            title.entry->artist.isEmpty() ? QString() : VersionKey(title.entry->artist, title.entry->title);
        const Judged* first = paths.value(title.entry->path);
        const Judged* like = version.isEmpty() ? nullptr : versions.value(version);
        const auto place = [](const Judged& other) { return u"Liste %1, %2."_s.arg(other.list).arg(other.row + 1); };
        if (first != nullptr)
            findings.Hint(title, u"Die Datei kommt zweimal: auch in %1"_s.arg(place(*first)));
        else if (like != nullptr)
            findings.Hint(title, u"Derselbe Titel in einer anderen Datei: %1"_s.arg(place(*like)));
        paths.insert(title.entry->path, first != nullptr ? first : &title);
        if (!version.isEmpty())
            versions.insert(version, like != nullptr ? like : &title);
    }
}

} // namespace

QList<PreshowFinding> JudgeTitles(const PreshowFacts& facts, const PreshowAnswers& answers) {
    const Titles titles = AllTitles(facts, answers);
    TitleFindings findings;
    JudgeEach(titles, facts, findings);
    JudgeDoubles(titles, findings);
    QList<PreshowFinding> all = findings.Take();
    const auto checked =
        std::count_if(titles.begin(), titles.end(), [](const Judged& title) { return title.known != nullptr; });
    if (titles.empty())
        all.append(
            {PreshowSeverity::Hint, u"Wiedergabelisten"_s, u"In beiden Listen ist kein Titel mehr zu spielen."_s, {}});
    else if (checked > 0)
        all.append({PreshowSeverity::Good,
                    u"Wiedergabelisten"_s,
                    checked == 1 ? u"1 Titel ganz dekodiert und geprüft"_s
                                 : u"%1 Titel ganz dekodiert und geprüft"_s.arg(checked),
                    {}});
    return all;
}

} // namespace kalvo::Preshow
