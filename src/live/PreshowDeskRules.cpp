// What the pre-show check says about sound cards, disks and the live tools.

#include "live/PreshowRules.h"

#include <QLocale>

#include <algorithm>
#include <cstdint>

namespace kalvo::Preshow {

namespace {

using namespace Qt::StringLiterals;

constexpr qint64 kMebibyte = 1 << 20;
constexpr qint64 kLeastData = 500 * kMebibyte; ///< lists, archive and journal need room
constexpr int kNight = 8 * 3600;               ///< s of recording

const QString kCards = u"Soundkarten"_s;

PreshowTarget Options(const QString& page) {
    return {PreshowTarget::Place::Options, 0, 0, page};
}

PreshowTarget Tool(PreshowTarget::Place place) {
    return {place, 0, 0, {}};
}

QString RoomText(qint64 bytes) {
    const double gibibytes = static_cast<double>(bytes) / (1024.0 * kMebibyte);
    return u"%1 GB"_s.arg(QLocale(QLocale::German).toString(gibibytes, 'f', 1));
}

class Findings {
public:
    void Add(PreshowSeverity severity, const QString& where, const QString& text, const PreshowTarget& target) {
        all_.append({severity, where, text, target});
    }
    /** A finding, or the good news where all is well. */
    void Say(bool isWell, PreshowSeverity otherwise, const QString& where, const QString& good, const QString& bad,
             const PreshowTarget& target) {
        Add(isWell ? PreshowSeverity::Good : otherwise, where, isWell ? good : bad, target);
    }
    QList<PreshowFinding> Take() { return std::move(all_); }

private:
    QList<PreshowFinding> all_;
};

bool IsThere(const PreshowFacts& facts, const OutputChoice& choice) {
    return choice.name.isEmpty() ? choice.device < facts.devices.size() : facts.devices.contains(choice.name);
}

QString NameOf(const PreshowFacts& facts, const OutputChoice& choice) {
    return choice.name.isEmpty() ? facts.devices.value(choice.device) : choice.name;
}

void JudgeMainCard(const PreshowFacts& facts, Findings& findings) {
    const QString where = u"Soundkarte"_s;
    const PreshowTarget target = Options(kCards);
    const QString playing = QString::fromStdString(facts.output.deviceName);
    if (!facts.outputOpen || facts.output.device == audio::kNoSound)
        return findings.Add(PreshowSeverity::Error, where, u"Es ist keine Ausgabe geöffnet: niemand hört etwas."_s,
                            target);
    const bool isThere = IsThere(facts, facts.main);
    findings.Say(isThere, PreshowSeverity::Error, where, u"Die Musik spielt auf „%1“."_s.arg(playing),
                 u"Die gewählte Soundkarte „%1“ ist nicht da, die Musik spielt auf „%2“."_s.arg(
                     NameOf(facts, facts.main), playing),
                 target);
    const std::uint64_t dropouts = facts.output.starvations + facts.output.overruns;
    findings.Say(dropouts == 0, PreshowSeverity::Hint, where, u"Bisher kein Aussetzer"_s,
                 dropouts == 1 ? u"Bisher 1 Aussetzer. Ein größerer Puffer hilft."_s
                               : u"Bisher %1 Aussetzer. Ein größerer Puffer hilft."_s.arg(dropouts),
                 target);
}

void JudgeHeadphones(const PreshowFacts& facts, Findings& findings) {
    const QString where = u"Kopfhörer"_s;
    const PreshowTarget target = Options(kCards);
    const int device = facts.headphones.Resolve(facts.devices);
    if (device == audio::kNoSound && facts.headphones.name.isEmpty())
        return findings.Add(PreshowSeverity::Hint, where, u"Für den Kopfhörer ist keine Soundkarte gewählt."_s, target);
    if (!IsThere(facts, facts.headphones))
        return findings.Add(
            PreshowSeverity::Error, where,
            u"Die Soundkarte für den Kopfhörer, „%1“, ist nicht da."_s.arg(NameOf(facts, facts.headphones)), target);
    const QString name = NameOf(facts, facts.headphones);
    const bool isSame =
        facts.outputOpen && (device == facts.output.device || name == QString::fromStdString(facts.output.deviceName));
    findings.Say(!isSame, PreshowSeverity::Error, where, u"Vorgehört wird auf „%1“."_s.arg(name),
                 u"Kopfhörer und Musik haben dieselbe Soundkarte: „%1“."_s.arg(name), target);
}

void JudgeSafety(const PreshowFacts& facts, const PreshowAnswers& answers, Findings& findings) {
    const PreshowTarget mixer = Options(u"Mixer"_s);
    const PreshowTarget emergency = Options(u"Notfalltitel"_s);
    const QString where = u"Stillstandswache"_s;
    findings.Say(facts.mixing.continuous, PreshowSeverity::Hint, where,
                 u"Steht die Musik still, geht sie nach zwei Sekunden weiter."_s,
                 u"Die kontinuierliche Wiedergabe ist aus: am Ende eines Titels bleibt es still."_s, mixer);
    if (facts.mixing.continuous && !facts.mixing.automatic)
        findings.Add(PreshowSeverity::Hint, u"Mixerautomatik"_s,
                     u"Sie ist aus: die Titel gehen nicht ineinander über."_s, mixer);
    if (facts.emergencyTitle.isEmpty())
        findings.Add(PreshowSeverity::Hint, u"Notfalltitel"_s, u"Es ist keiner gewählt."_s, emergency);
    else if (answers.disksAsked)
        findings.Say(!answers.missingFiles.contains(facts.emergencyTitle), PreshowSeverity::Error, u"Notfalltitel"_s,
                     u"Gewählt und vorhanden"_s, u"Die Datei fehlt: %1"_s.arg(facts.emergencyTitle), emergency);
}

void JudgeDisks(const PreshowFacts& facts, const PreshowAnswers& answers, Findings& findings) {
    const auto room = [&findings](const QString& where, qint64 free, qint64 least, const PreshowTarget& target) {
        if (free < 0)
            findings.Add(PreshowSeverity::Hint, where, u"Der freie Platz lässt sich nicht feststellen."_s, target);
        else
            findings.Say(free >= least, PreshowSeverity::Hint, where, u"%1 frei"_s.arg(RoomText(free)),
                         u"Nur noch %1 frei"_s.arg(RoomText(free)), target);
    };
    if (!answers.disksAsked)
        return;
    room(u"Datenordner"_s, answers.dataFree, kLeastData, {});
    room(u"Platz für Mitschnitte"_s, answers.recordingFree,
         std::max<qint64>(kLeastData, qint64(facts.recordingRate) * kNight), Tool(PreshowTarget::Place::Recording));
}

void JudgeTools(const PreshowFacts& facts, const PreshowAnswers& answers, Findings& findings) {
    if (answers.disksAsked) {
        for (const PreshowFile& file : facts.files) {
            if (answers.missingFiles.contains(file.path))
                findings.Add(PreshowSeverity::Error, file.where, u"Die Datei fehlt: %1"_s.arg(file.path), file.target);
        }
        const bool areThere = std::none_of(facts.files.begin(), facts.files.end(), [&answers](const PreshowFile& file) {
            return answers.missingFiles.contains(file.path);
        });
        if (areThere && !facts.files.isEmpty())
            findings.Add(PreshowSeverity::Good, u"Termin-Play und Sampler"_s, u"Alle Dateien sind da."_s, {});
    }
    if (facts.refillTitles) {
        const bool none = *facts.refillTitles == 0;
        findings.Say(*facts.refillTitles >= Preshow::kEnoughToRefill,
                     none ? PreshowSeverity::Error : PreshowSeverity::Hint, u"Auto DJ"_s,
                     u"Füllt die Listen nach, passende Titel sind da."_s,
                     none ? u"Kein Titel des Musikarchivs passt zur Auswahl."_s
                          : u"Nur %1 Titel des Musikarchivs passen zur Auswahl."_s.arg(*facts.refillTitles),
                     Tool(PreshowTarget::Place::AutoDj));
    }
}

} // namespace

QList<PreshowFinding> JudgeDesk(const PreshowFacts& facts, const PreshowAnswers& answers) {
    Findings findings;
    JudgeMainCard(facts, findings);
    JudgeHeadphones(facts, findings);
    JudgeSafety(facts, answers, findings);
    JudgeDisks(facts, answers, findings);
    JudgeTools(facts, answers, findings);
    return findings.Take();
}

QList<PreshowFinding> Judge(const PreshowFacts& facts, const PreshowAnswers& answers) {
    QList<PreshowFinding> all = JudgeTitles(facts, answers) + JudgeDesk(facts, answers);
    std::stable_sort(all.begin(), all.end(),
                     [](const PreshowFinding& a, const PreshowFinding& b) { return a.severity < b.severity; });
    return all;
}

} // namespace kalvo::Preshow
