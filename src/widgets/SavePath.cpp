#include "widgets/SavePath.h"

#include "widgets/xMessageBox.h"

#include <QFileDialog>
#include <QFileInfo>

#include <algorithm>

namespace kalvo {

namespace {

bool MayReplace(QFileDialog& dialog, const QString& path) {
    const QString question =
        QStringLiteral("Die Datei „%1“ ist schon vorhanden.\nSoll sie ersetzt werden?").arg(QFileInfo(path).fileName());
    return xMessageBox::Ask(dialog.parentWidget(), dialog.windowTitle(), question,
                            {QStringLiteral("Ja"), QStringLiteral("Nein")},
                            xMessageBox::Sign::Warning) == QStringLiteral("Ja");
}

} // namespace

QString AskSavePath(QFileDialog& dialog, const QStringList& endings, bool asks) {
    if (dialog.exec() != QDialog::Accepted)
        return {};
    QString path = dialog.selectedFiles().value(0);
    const bool isWhole = std::any_of(endings.begin(), endings.end(), [&path](const QString& ending) {
        return path.endsWith(ending, Qt::CaseInsensitive);
    });
    if (path.isEmpty() || isWhole)
        return path;
    path += u'.' + dialog.defaultSuffix();
    return asks && QFileInfo::exists(path) && !MayReplace(dialog, path) ? QString() : path;
}

} // namespace kalvo
