#include "app/frmOptionen.h"

#include "app/OptionColumnsPage.h"
#include "app/OptionDesktopPage.h"
#include "app/OptionEmergencyPage.h"
#include "app/OptionMeterPage.h"
#include "app/OptionMixerPage.h"
#include "app/OptionSoundPage.h"
#include "app/OptionStylePage.h"
#include "app/OptionTextPages.h"
#include "widgets/IconButton.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStackedWidget>

namespace kalvo {

namespace {

/** On a small screen with a large font a page scrolls rather than grows out of it. */
QScrollArea* Scrolled(OptionPage* page) {
    auto* area = new QScrollArea;
    area->setWidget(page);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    return area;
}

} // namespace

frmOptionen::frmOptionen(const OptionValues& values, const QStringList& devices, QWidget* parent)
    : QDialog(parent),
      opened_(values),
      list_(new QListWidget(this)),
      stack_(new QStackedWidget(this)),
      sound_(new OptionSoundPage(devices)),
      style_(new OptionStylePage) {
    setObjectName(QStringLiteral("frmOptionen"));
    setWindowTitle(tr("Optionen"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(BuildPages(), 1);
    column->addLayout(BuildButtons());
    for (OptionPage* page :
         {static_cast<OptionPage*>(new OptionMixerPage), static_cast<OptionPage*>(sound_),
          static_cast<OptionPage*>(new OptionEmergencyPage), static_cast<OptionPage*>(new OptionMeterPage),
          static_cast<OptionPage*>(style_), static_cast<OptionPage*>(new OptionColumnsPage),
          static_cast<OptionPage*>(new OptionScreenSaverPage), static_cast<OptionPage*>(new OptionChartsPage),
          static_cast<OptionPage*>(new OptionMetadataPage), static_cast<OptionPage*>(new OptionDesktopPage)})
        AddPage(page);
    connect(sound_, &OptionSoundPage::ToneRequested, this, &frmOptionen::ToneRequested);
    connect(style_, &OptionStylePage::Chosen, this, [this] {
        const OptionValues chosen = Values();
        Q_EMIT LookChosen(chosen.skin, chosen.fontSize, chosen.buttonSize);
    });
    connect(this, &QDialog::rejected, this, &frmOptionen::TakeLookBack);
    list_->setCurrentRow(0);
    ApplyLook();
    opened_ = Values(); // what a page cannot show is no change of the user's
}

void frmOptionen::AddPage(OptionPage* page) {
    page->Show(opened_);
    pages_.append(page);
    list_->addItem(page->accessibleName());
    stack_->addWidget(Scrolled(page));
}

QWidget* frmOptionen::BuildPages() {
    auto* both = new QWidget(this);
    auto* row = new QHBoxLayout(both);
    row->setContentsMargins({});
    list_->setObjectName(QStringLiteral("lstSeiten"));
    list_->setAccessibleName(tr("Seiten der Optionen"));
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    stack_->setObjectName(QStringLiteral("Seiten"));
    stack_->setAccessibleName(tr("Seite"));
    row->addWidget(list_);
    row->addWidget(stack_, 1);
    connect(list_, &QListWidget::currentRowChanged, stack_, &QStackedWidget::setCurrentIndex);
    return both;
}

QLayout* frmOptionen::BuildButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(SkinStyle::Units().Gap(2));
    row->addStretch(1);
    cancel_ = new QPushButton(tr("Abbrechen"), this);
    cancel_->setObjectName(QStringLiteral("cmdAbbrechen"));
    cancel_->setAutoDefault(false);
    confirm_ = new IconButton(QStringLiteral("check"), IconButton::Size::Normal, this);
    confirm_->setText(tr("Übernehmen"));
    confirm_->SetOn(true);
    confirm_->setObjectName(QStringLiteral("Command5"));
    confirm_->setDefault(true);
    for (QPushButton* button : {cancel_, static_cast<QPushButton*>(confirm_)}) {
        button->setAccessibleName(button->text());
        row->addWidget(button);
    }
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
    connect(confirm_, &QPushButton::clicked, this, &QDialog::accept);
    return row;
}

OptionValues frmOptionen::Values() const {
    OptionValues values = opened_;
    for (const OptionPage* page : pages_)
        page->Take(values);
    return values;
}

void frmOptionen::ShowPage(const QString& caption) {
    if (const QList<QListWidgetItem*> found = list_->findItems(caption, Qt::MatchExactly); !found.isEmpty())
        list_->setCurrentItem(found.constFirst());
}

void frmOptionen::ShowToneResult(const QString& text) {
    sound_->ShowToneResult(text);
}

void frmOptionen::TakeLookBack() {
    const OptionValues shown = Values();
    if (shown.skin != opened_.skin || shown.fontSize != opened_.fontSize || shown.buttonSize != opened_.buttonSize)
        Q_EMIT LookChosen(opened_.skin, opened_.fontSize, opened_.buttonSize);
}

void frmOptionen::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::StyleChange && confirm_ != nullptr)
        ApplyLook();
}

void frmOptionen::ApplyLook() {
    const FontUnits& units = SkinStyle::Units();
    layout()->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    layout()->setSpacing(units.Gap(3));
    for (QPushButton* button : {cancel_, static_cast<QPushButton*>(confirm_)})
        button->setMinimumWidth(units.Of(7.2));
    int widest = 0;
    for (int page = 0; page < list_->count(); ++page) {
        list_->item(page)->setSizeHint(QSize(0, units.Button()));
        widest = qMax(widest, list_->fontMetrics().horizontalAdvance(list_->item(page)->text()));
    }
    list_->setFixedWidth(widest + units.Of(2));
    const QSize room = screen()->availableGeometry().size() - QSize(units.Gap(4), units.Of(3));
    resize(QSize(units.Of(58), units.Of(40)).boundedTo(room));
}

} // namespace kalvo
