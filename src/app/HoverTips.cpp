#include "app/HoverTips.h"

#include <QCursor>
#include <QHelpEvent>
#include <QToolTip>

namespace kalvo {

namespace {

/** Lines of a tip; a lyric of many verses would cover the desk. */
constexpr int kMostLines = 40;

} // namespace

HoverTips::HoverTips(QObject* parent) : QObject(parent) {
    connect(&reader_, &HoverReader::Ready, this, &HoverTips::ShowWhatFollowed);
}

void HoverTips::Watch(QWidget& widget, const SubjectAt& subjectAt) {
    watched_.insert(&widget, subjectAt);
    widget.installEventFilter(this);
    connect(&widget, &QObject::destroyed, this, [this](const QObject* gone) { watched_.remove(gone); });
}

bool HoverTips::eventFilter(QObject* watched, QEvent* event) {
    const auto subjectAt = watched_.constFind(watched);
    if (event->type() != QEvent::ToolTip || subjectAt == watched_.constEnd())
        return QObject::eventFilter(watched, event);
    auto* widget = static_cast<QWidget*>(watched);
    const QPoint place = static_cast<QHelpEvent*>(event)->pos();
    const std::optional<Subject> subject = (*subjectAt)(place);
    if (!subject || subject->path.isEmpty())
        return false;
    waiting_ = nullptr;
    if (const HoverInfo* info = reader_.Find(subject->path))
        Show(*widget, place, *subject, *info);
    else
        waiting_ = widget;
    return true;
}

void HoverTips::ShowWhatFollowed(const QString& path) {
    if (!waiting_ || !waiting_->underMouse())
        return;
    const QPoint place = waiting_->mapFromGlobal(QCursor::pos());
    const std::optional<Subject> subject = watched_.value(waiting_)(place);
    const HoverInfo* info = subject && subject->path == path ? reader_.Find(path) : nullptr;
    if (info != nullptr)
        Show(*waiting_, place, *subject, *info);
    waiting_ = nullptr;
}

void HoverTips::Show(QWidget& widget, const QPoint& place, const Subject& subject, const HoverInfo& info) {
    QString text = subject.lyrics ? LyricsText(subject.artist, subject.title, info)
                                  : HoverText(subject.artist, subject.title, info);
    text.remove(u'\r');
    QStringList lines = text.split(u'\n');
    if (lines.size() > kMostLines)
        lines = lines.mid(0, kMostLines) + QStringList{QStringLiteral("...")};
    // As text that is taken literally: a title may look like markup.
    text = QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(lines.join(u'\n').toHtmlEscaped());
    constexpr int reach = 4; // pixels that the pointer may tremble without hiding the tip
    QToolTip::showText(widget.mapToGlobal(place), text, &widget,
                       QRect(place, QSize()).adjusted(-reach, -reach, reach, reach));
}

} // namespace kalvo
