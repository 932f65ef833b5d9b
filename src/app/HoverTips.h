#pragma once

#include "tags/HoverReader.h"

#include <QPoint>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>

namespace kalvo {

/**
 * Floating tips that tell what a file's tags hold. What is not known yet is read in the background: the tip then
 * follows as soon as it is there, if the pointer still rests on the title.
 */
class HoverTips : public QObject {
    Q_OBJECT

public:
    struct Subject {
        QString artist;
        QString title;
        QString path;
        bool lyrics = false; ///< with the lyric
    };
    /** The title at a place of the widget; none where there is none. */
    using SubjectAt = std::function<std::optional<Subject>(const QPoint& place)>;

    explicit HoverTips(QObject* parent = nullptr);

    void Watch(QWidget& widget, const SubjectAt& subjectAt);
    /** The file's tags have changed. */
    void Forget(const QString& path) { reader_.Forget(path); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ShowWhatFollowed(const QString& path);
    static void Show(QWidget& widget, const QPoint& place, const Subject& subject, const HoverInfo& info);

    HoverReader reader_;
    QHash<const QObject*, SubjectAt> watched_;
    QPointer<QWidget> waiting_; ///< the widget whose tip is to follow
};

} // namespace kalvo
