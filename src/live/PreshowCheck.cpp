#include "live/PreshowCheck.h"

#include "base/BackgroundPriority.h"
#include "base/FreeSpace.h"
#include "live/TitleInspector.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace kalvo {

namespace {

constexpr int kRefreshAfter = 400; // ms
constexpr int kJudgeAfter = 100;   // ms: many known titles come at once

} // namespace

PreshowCheck::PreshowCheck(std::function<PreshowFacts()> facts, TitleInspector& inspector, QObject* parent)
    : QObject(parent), takeFacts_(std::move(facts)), inspector_(inspector) {
    refreshSoon_.setSingleShot(true);
    refreshSoon_.setInterval(kRefreshAfter);
    judgeSoon_.setSingleShot(true);
    judgeSoon_.setInterval(kJudgeAfter);
    connect(&refreshSoon_, &QTimer::timeout, this, [this] {
        TakeFacts();
        AskDisks();
        RequestTitles();
        Judge();
    });
    connect(&judgeSoon_, &QTimer::timeout, this, &PreshowCheck::Judge);
    connect(&inspector_, &TitleInspector::Inspected, this, &PreshowCheck::TakeTitle);
    disks_.Do([] {
        StepBehindMusic();
        return BackgroundWorker::Answer();
    });
}

PreshowCheck::~PreshowCheck() {
    inspector_.disconnect(this);
    inspector_.Cancel();
}

void PreshowCheck::Start() {
    Q_EMIT Starting();
    inspector_.Cancel();
    started_ = true;
    running_ = true;
    answers_ = {};
    TakeFacts();
    AskDisks();
    RequestTitles();
    Judge();
}

void PreshowCheck::Cancel() {
    inspector_.Cancel();
    refreshSoon_.stop();
    started_ = false;
    running_ = false;
    Judge();
}

void PreshowCheck::Refresh() {
    if (started_ && !refreshSoon_.isActive())
        refreshSoon_.start();
}

void PreshowCheck::TakeFacts() {
    facts_ = takeFacts_();
    paths_.clear();
    for (const QList<PreshowEntry>& list : facts_.lists) {
        for (const PreshowEntry& place : list)
            paths_.insert(place.entry.path);
    }
    answers_.titles.removeIf([this](const auto& known) { return !paths_.contains(known.key()); });
}

/** In the order in which they will play: the titles that are on first are known first. */
void PreshowCheck::RequestTitles() {
    if (!running_ && paths_.size() == answers_.titles.size())
        return;
    running_ = true;
    const auto longest = std::max(facts_.lists[0].size(), facts_.lists[1].size());
    for (qsizetype row = 0; row < longest; ++row) {
        for (const QList<PreshowEntry>& list : facts_.lists) {
            if (row < list.size() && !answers_.titles.contains(list.at(row).entry.path))
                inspector_.Request(list.at(row).entry.path);
        }
    }
}

void PreshowCheck::AskDisks() {
    QStringList files;
    for (const PreshowFile& file : std::as_const(facts_.files))
        files.append(file.path);
    if (!facts_.emergencyTitle.isEmpty())
        files.append(facts_.emergencyTitle);
    disks_.DropWaiting();
    disks_.Do([this, files, round = ++disksRound_, recording = facts_.recordingFolder, data = facts_.dataFolder] {
        PreshowAnswers found;
        for (const QString& path : files) {
            if (!QFileInfo(path).isFile())
                found.missingFiles.insert(path);
        }
        found.recordingFree = FreeSpaceOf(recording);
        found.dataFree = FreeSpaceOf(data);
        return BackgroundWorker::Answer([this, found, round] {
            if (round != disksRound_)
                return;
            answers_.disksAsked = true;
            answers_.missingFiles = found.missingFiles;
            answers_.recordingFree = found.recordingFree;
            answers_.dataFree = found.dataFree;
            Judge();
        });
    });
}

void PreshowCheck::TakeTitle(const QString& path, const InspectedTitle& title) {
    if (!paths_.contains(path))
        return; // no longer in the lists
    answers_.titles.insert(path, title);
    if (!judgeSoon_.isActive())
        judgeSoon_.start();
}

void PreshowCheck::Judge() {
    running_ = running_ && (Done() < Count() || !answers_.disksAsked);
    findings_ = Preshow::Judge(facts_, answers_);
    Q_EMIT Changed();
}

} // namespace kalvo
