#include "tags/ui/PicturePage.h"

#include "tags/PictureFile.h"
#include "widgets/SkinStyle.h"
#include "widgets/xMessageBox.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStandardPaths>
#include <QTableWidget>

namespace kalvo {

namespace {

/** The picture types, by their numbers. */
QStringList PictureTypes() {
    return {PicturePage::tr("Anderes"),
            PicturePage::tr("Dateisymbol 32 x 32"),
            PicturePage::tr("Dateisymbol"),
            PicturePage::tr("Vorderseite"),
            PicturePage::tr("Rückseite"),
            PicturePage::tr("Beiheft"),
            PicturePage::tr("Datenträger"),
            PicturePage::tr("Hauptinterpret"),
            PicturePage::tr("Interpret"),
            PicturePage::tr("Dirigent"),
            PicturePage::tr("Band, Orchester"),
            PicturePage::tr("Komponist"),
            PicturePage::tr("Textdichter"),
            PicturePage::tr("Aufnahmeort"),
            PicturePage::tr("Bei der Aufnahme"),
            PicturePage::tr("Beim Auftritt"),
            PicturePage::tr("Szene aus dem Film"),
            PicturePage::tr("Bunter Fisch"),
            PicturePage::tr("Zeichnung"),
            PicturePage::tr("Zeichen der Band"),
            PicturePage::tr("Zeichen des Verlags")};
}

} // namespace

PicturePage::PicturePage(QWidget* parent)
    : QWidget(parent),
      list_(new QTableWidget(0, 3, this)),
      preview_(new QLabel(this)),
      hint_(new QLabel(tr("Die Dateien enthalten verschiedene Bilder."), this)),
      description_(new QLineEdit(this)),
      type_(new QComboBox(this)),
      add_(new QPushButton(tr("Bild hinzufügen..."), this)),
      remove_(new QPushButton(tr("Bild entfernen"), this)) {
    BuildList();
    const FontUnits& units = SkinStyle::Units();
    preview_->setObjectName(QStringLiteral("imgCover"));
    preview_->setAccessibleName(tr("Gewähltes Bild"));
    preview_->setAlignment(Qt::AlignCenter);
    preview_->setFixedSize(units.Of(9), units.Of(9));
    preview_->setFrameShape(QFrame::StyledPanel);
    description_->setObjectName(QStringLiteral("txtBildBeschreibung"));
    description_->setAccessibleName(tr("Beschreibung des Bildes"));
    description_->setPlaceholderText(tr("Beschreibung"));
    description_->setMinimumWidth(units.Of(8));
    type_->setObjectName(QStringLiteral("cboBildTyp"));
    type_->setAccessibleName(tr("Art des Bildes"));
    type_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    type_->setMinimumContentsLength(6);
    type_->addItems(PictureTypes());
    add_->setObjectName(QStringLiteral("cmdBildHinzu"));
    remove_->setObjectName(QStringLiteral("cmdBildWeg"));
    for (QPushButton* button : {add_, remove_})
        button->setAutoDefault(false);
    auto* grid = new QGridLayout(this);
    grid->setSpacing(units.Gap(2));
    grid->addWidget(list_, 0, 0, 1, 4);
    grid->addWidget(preview_, 0, 4, 3, 1, Qt::AlignTop);
    grid->addWidget(hint_, 1, 0, 1, 4);
    grid->addWidget(description_, 2, 0);
    grid->addWidget(type_, 2, 1);
    grid->addWidget(add_, 2, 2);
    grid->addWidget(remove_, 2, 3);
    grid->setColumnStretch(0, 3);
    grid->setColumnStretch(1, 2);
    grid->setRowStretch(0, 1);
    connect(list_, &QTableWidget::itemSelectionChanged, this, &PicturePage::ShowPicture);
    connect(description_, &QLineEdit::textEdited, this, &PicturePage::ChangeCurrent);
    connect(type_, &QComboBox::activated, this, &PicturePage::ChangeCurrent);
    connect(add_, &QPushButton::clicked, this, &PicturePage::AskForFile);
    connect(remove_, &QPushButton::clicked, this, &PicturePage::Remove);
    Show({}, true);
}

void PicturePage::BuildList() {
    list_->setObjectName(QStringLiteral("lstImages"));
    list_->setAccessibleName(tr("Bilder"));
    list_->setHorizontalHeaderLabels({tr("Beschreibung"), tr("Art"), tr("Format")});
    list_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    list_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    list_->horizontalHeader()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    list_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    list_->verticalHeader()->hide();
    list_->verticalHeader()->setDefaultSectionSize(SkinStyle::Units().TableRow());
    list_->setSelectionBehavior(QAbstractItemView::SelectRows);
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setTabKeyNavigation(false);
    list_->setShowGrid(false);
}

void PicturePage::Show(const QList<TagPicture>& pictures, bool alike) {
    pictures_ = alike ? pictures : QList<TagPicture>();
    edited_ = false;
    hint_->setVisible(!alike);
    FillList(0);
}

void PicturePage::FillList(int current) {
    const QStringList types = PictureTypes();
    {
        const QSignalBlocker blocker(list_);
        list_->setRowCount(static_cast<int>(pictures_.size()));
        for (int row = 0; row < list_->rowCount(); ++row) {
            const TagPicture& picture = pictures_.at(row);
            const QString size = tr(", %1 kB").arg((picture.bytes.size() + 999) / 1000);
            list_->setItem(row, 0, new QTableWidgetItem(picture.description));
            list_->setItem(row, 1, new QTableWidgetItem(types.value(picture.type, types.first())));
            list_->setItem(row, 2, new QTableWidgetItem(picture.mime + size));
        }
        list_->setCurrentCell(current, 0);
    }
    ShowPicture();
}

void PicturePage::ShowPicture() {
    const int row = list_->currentRow();
    const bool any = row >= 0 && row < pictures_.size();
    const TagPicture picture = pictures_.value(row);
    description_->setText(picture.description);
    type_->setCurrentIndex(any ? picture.type : -1);
    for (QWidget* control :
         {static_cast<QWidget*>(description_), static_cast<QWidget*>(type_), static_cast<QWidget*>(remove_)})
        control->setEnabled(any);
    QPixmap pixmap;
    if (any && pixmap.loadFromData(picture.bytes))
        preview_->setPixmap(
            pixmap.scaled(preview_->contentsRect().size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
    else
        preview_->setText(any ? tr("Nicht darstellbar") : tr("Kein Bild"));
}

void PicturePage::Touch() {
    edited_ = true;
    hint_->hide();
    Q_EMIT Edited();
}

void PicturePage::ChangeCurrent() {
    const int row = list_->currentRow();
    if (row < 0 || row >= pictures_.size())
        return;
    pictures_[row].description = description_->text();
    pictures_[row].type = std::max(0, type_->currentIndex());
    list_->item(row, 0)->setText(description_->text());
    list_->item(row, 1)->setText(type_->currentText());
    Touch();
}

void PicturePage::Remove() {
    const int row = list_->currentRow();
    if (row < 0 || row >= pictures_.size())
        return;
    pictures_.removeAt(row);
    FillList(std::min<int>(row, static_cast<int>(pictures_.size()) - 1));
    Touch();
}

void PicturePage::AskForFile() {
    const QString known =
        QDir(folder_).exists() ? folder_ : QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    const QString path = QFileDialog::getOpenFileName(this, tr("Bild hinzufügen"), known,
                                                      tr("Bilder (*.jpg *.jpeg *.png *.gif *.JPG *.JPEG *.PNG *.GIF)"));
    if (path.isEmpty())
        return;
    folder_ = QFileInfo(path).path();
    AddFile(path);
}

void PicturePage::AddFile(const QString& path) {
    auto picture = ReadPictureFile(path);
    if (!picture) {
        xMessageBox::Ask(this, tr("Bild hinzufügen"), tr("Die Datei ist kein Bild, das eingebettet werden kann."), {},
                         xMessageBox::Sign::Warning);
        return;
    }
    pictures_.append(*picture);
    FillList(static_cast<int>(pictures_.size()) - 1);
    Touch();
}

} // namespace kalvo
