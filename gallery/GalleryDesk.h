#pragma once

#include "app/Desk.h"
#include "app/Form1.h"
#include "support/TestFolder.h"

#include <QAction>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>

namespace kalvo::gallery {

class StageAudio;

/** The program's main window on a desk full of invented content, with one title on air; nothing sounds. */
class GalleryDesk {
public:
    enum class Content { None, Evening };

    explicit GalleryDesk(Content content = Content::Evening);
    ~GalleryDesk();

    kalvo::Desk& Desk() { return *desk_; }
    Form1& Window() { return *window_; }
    /** Titles whose files exist. */
    const QStringList& Music() const { return music_; }

    QAction& Action(const char* objectName);
    /** Everything that is open takes the look. */
    void ShowLook(const QString& skin, const QString& fontSize);
    /** Lets layouts, queued calls and what threads have found come to rest. */
    static void Settle();

    /** Texts of questions that came up by themselves and were closed, so that nothing waits for an answer. */
    const QStringList& UnexpectedQuestions() const { return unexpected_; }

private:
    void CloseQuestion();

    test::TestFolder folder_;
    QTemporaryDir otherFolder_;
    QString shownFolder_; ///< of music and samples
    QStringList music_;
    StageAudio* audio_ = nullptr;
    std::unique_ptr<kalvo::Desk> desk_;
    std::unique_ptr<Form1> window_;
    QStringList unexpected_;
    QTimer guard_;
};

} // namespace kalvo::gallery
