#include "tags/ui/frmTagEditor.h"

#include "base/FileName.h"
#include "tags/TagJobs.h"
#include "tags/ui/PicturePage.h"
#include "tags/ui/TagColumn.h"
#include "widgets/ElidedLabel.h"
#include "widgets/xMessageBox.h"

#include <QEventLoop>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace kalvo {

namespace {

/** Reasons that a message shows; further ones are counted. */
constexpr qsizetype kMostReasons = 8;
constexpr int kEndPatience = 60'000; // ms

constexpr std::pair<TagField, TagField> kPairs[] = {
    {TagField::V1Title, TagField::Title},    {TagField::V1Artist, TagField::Artist},
    {TagField::V1Album, TagField::Album},    {TagField::V1Year, TagField::Year},
    {TagField::V1Genre, TagField::Genre},    {TagField::V1Track, TagField::Track},
    {TagField::V1Comment, TagField::Comment}};

} // namespace

void frmTagEditor::Edit(const QStringList& paths) {
    if (saving_ > 0 || !MayDrop())
        return;
    wanted_ = paths;
    Show({});
    state_->SetText(tr("Wird gelesen..."));
    jobs_->Load(paths);
}

bool frmTagEditor::MayDrop() {
    if (!edited_)
        return true;
    const QString answer =
        xMessageBox::Ask(this, windowTitle(), tr("Die Änderungen sind nicht gespeichert. Sollen sie verworfen werden?"),
                         {tr("Ja"), tr("Nein")}, xMessageBox::Sign::Warning);
    return answer == tr("Ja");
}

void frmTagEditor::reject() {
    if (saving_ > 0) {
        closeAfter_ = true;
        return;
    }
    if (!MayDrop())
        return;
    edited_ = false;
    QDialog::reject();
}

void frmTagEditor::FinishSaving() {
    if (saving_ == 0)
        return;
    ending_ = true;
    QEventLoop written;
    connect(jobs_, &TagJobs::Finished, &written, &QEventLoop::quit);
    QTimer::singleShot(kEndPatience, &written, &QEventLoop::quit);
    written.exec(QEventLoop::ExcludeUserInputEvents);
}

void frmTagEditor::Show(const QList<TagForm>& forms) {
    forms_.clear();
    QStringList refused;
    for (const TagForm& form : forms) {
        if (form.reason.isEmpty())
            forms_.append(form);
        else
            refused += FileName::Last(form.path) + QStringLiteral(": ") + form.reason;
    }
    const bool anyMpeg =
        std::any_of(forms_.begin(), forms_.end(), [](const TagForm& form) { return form.format == AudioFormat::Mpeg; });
    const bool anyOgg =
        std::any_of(forms_.begin(), forms_.end(), [](const TagForm& form) { return form.format != AudioFormat::Mpeg; });
    showing_ = true;
    id3v2_->setTitle(!anyOgg ? tr("ID3v2") : anyMpeg ? tr("ID3v2 / Vorbis-Kommentare") : tr("Vorbis-Kommentare"));
    id3v1_->setVisible(anyMpeg || forms_.isEmpty());
    between_->setVisible(anyMpeg || forms_.isEmpty());
    id3v1_->Show(forms_);
    id3v2_->Show(forms_);
    const bool alike = std::all_of(forms_.begin(), forms_.end(),
                                   [this](const TagForm& form) { return form.pictures == forms_.first().pictures; });
    pictures_->Show(forms_.isEmpty() ? QList<TagPicture>() : forms_.first().pictures, alike);
    const std::optional<QString> lyric = CommonText(forms_, TagField::Lyric);
    lyric_->setPlainText(lyric.value_or(QString()));
    lyric_->setPlaceholderText(lyric || forms_.isEmpty() ? tr("keine Lyrics vorhanden...") : tr("(verschieden)"));
    lyricEdited_ = edited_ = showing_ = false;
    ShowHead();
    const bool justSaved = std::exchange(justSaved_, false);
    state_->SetText(justSaved && refused.isEmpty() ? tr("Gespeichert.") : refused.join(QStringLiteral("  ")));
    ShowState();
    if (!forms_.isEmpty() && focusWidget() == close_) // the others could not take the focus while files were read
        id3v2_->setFocus();
}

void frmTagEditor::ShowHead() {
    if (forms_.size() == 1) {
        head_->SetText(forms_.first().path);
        technical_->SetText(forms_.first().technical);
    } else {
        head_->SetText(forms_.isEmpty() ? QString() : tr("%1 Dateien").arg(forms_.size()));
        technical_->SetText(
            forms_.isEmpty() ? QString() : tr("Gespeichert werden nur die Felder, die Sie ändern, in jeder Datei."));
    }
}

void frmTagEditor::ShowState() {
    const bool idle = saving_ == 0;
    const bool any = !forms_.isEmpty();
    save_->setEnabled(idle && any && edited_);
    for (QWidget* part :
         {static_cast<QWidget*>(id3v1_), static_cast<QWidget*>(id3v2_), between_, static_cast<QWidget*>(pages_)})
        part->setEnabled(idle && any);
}

void frmTagEditor::Touch() {
    if (showing_)
        return;
    edited_ = true;
    state_->SetText({});
    ShowState();
}

void frmTagEditor::Copy(bool toId3v1) {
    for (const auto& [v1, v2] : kPairs) {
        if (toId3v1)
            id3v1_->Take(v1, id3v2_->Text(v2));
        else if (!id3v1_->Text(v1).isEmpty())
            id3v2_->Take(v2, id3v1_->Text(v1));
    }
}

TagEdit frmTagEditor::CollectEdit() const {
    TagEdit edit;
    id3v1_->Collect(edit);
    id3v2_->Collect(edit);
    if (lyricEdited_)
        edit.Text(TagField::Lyric) = lyric_->toPlainText();
    if (pictures_->IsEdited())
        edit.pictures = pictures_->Pictures();
    return edit;
}

void frmTagEditor::Save() {
    const TagEdit edit = CollectEdit();
    if (saving_ > 0 || forms_.isEmpty() || edit.IsEmpty())
        return;
    QStringList paths;
    for (const TagForm& form : std::as_const(forms_))
        paths.append(form.path);
    failures_.clear();
    saving_ = toSave_ = static_cast<int>(paths.size());
    state_->SetText(tr("Wird gespeichert..."));
    ShowState();
    jobs_->Save(paths, edit);
}

void frmTagEditor::TakeSaved(const TagSaved& saved) {
    --saving_;
    if (saved.reason.isEmpty())
        Q_EMIT FileSaved(saved);
    else
        failures_ += FileName::Last(saved.path) + QStringLiteral(":\n") + saved.reason;
    if (toSave_ > 1)
        state_->SetText(tr("%1 von %2 gespeichert").arg(toSave_ - saving_).arg(toSave_));
}

void frmTagEditor::EndSave() {
    saving_ = 0;
    if (ending_)
        return;
    const qsizetype failed = failures_.size();
    if (failed == 0) {
        edited_ = false;
        if (closeAfter_)
            return reject();
        justSaved_ = true;
        jobs_->Load(wanted_); // what the files hold now
        return;
    }
    closeAfter_ = false;
    ShowState();
    state_->SetText(tr("%1 von %2 nicht gespeichert").arg(failed).arg(toSave_));
    QStringList reasons = failures_.mid(0, kMostReasons);
    if (failed > kMostReasons)
        reasons += tr("... und %1 weitere").arg(failed - kMostReasons);
    xMessageBox::Ask(this, windowTitle(), reasons.join(QStringLiteral("\n")), {}, xMessageBox::Sign::Warning);
}

} // namespace kalvo
