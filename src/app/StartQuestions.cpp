#include "app/StartQuestions.h"

#include "app/frmStart.h"
#include "base/DataFolder.h"
#include "widgets/xMessageBox.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QScreen>

namespace kalvo {

namespace {

const QString kAnswerYes = QStringLiteral("Ja");
const QString kAnswerNo = QStringLiteral("Nein");
const QString kOk = QStringLiteral("OK");

/** The separate player program lies beside the data folder. */
QString PlayerProgram(const QString& documents) {
    return QDir(documents).filePath(QStringLiteral("1234/1234.exe"));
}

} // namespace

void TellComponentFault(const ComponentFault& fault, const ComponentDownload& download) {
    if (!fault.message.isEmpty()) {
        xMessageBox::Ask(nullptr, fault.caption, fault.message, {kOk}, xMessageBox::Sign::Error);
    }
    if (fault.component.isEmpty()) {
        return;
    }
    const QString answer =
        xMessageBox::Ask(nullptr, fault.caption, fault.question, {kAnswerYes, kAnswerNo}, xMessageBox::Sign::Warning);
    if (answer == kAnswerYes) {
        download(fault.component);
    } else {
        xMessageBox::Ask(nullptr, fault.caption, fault.farewell, {kOk});
    }
}

bool ChooseProgram(const DataFolder& folder) {
    const QString documents = QFileInfo(folder.Root()).path();
    const QString player = PlayerProgram(documents);
    const PlayerOffer offer = OfferPlayer(QApplication::primaryScreen()->size().width(), QFileInfo(player).isFile(),
                                          QFileInfo::exists(folder.Path(QStringLiteral("\\Musikarchiv\\default.mav"))));
    for (;;) {
        frmStart choice(QDir::toNativeSeparators(documents), offer);
        if (choice.exec() != QDialog::Accepted) {
            return false;
        }
        if (!choice.IsPlayerChosen()) {
            return true;
        }
        if (QProcess::startDetached(player, {}, QFileInfo(player).path())) {
            return false;
        }
        xMessageBox::Ask(nullptr, choice.windowTitle(),
                         QStringLiteral("Der Player konnte nicht gestartet werden:\n") + player, {kOk},
                         xMessageBox::Sign::Warning);
    }
}

} // namespace kalvo
