#include "app/OptionSoundPage.h"
#include "widgets/ButtonPainting.h"
#include "widgets/RingRoom.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace kalvo {

namespace {

/** What tells a device that is kept but not there at present. */
constexpr int goneRole = Qt::UserRole + 1;

} // namespace

OptionSoundPage::OptionSoundPage(const QStringList& devices, QWidget* parent)
    : OptionPage(tr("Soundkarten"), parent), devices_(devices) {
    output_ = AddDevice(QStringLiteral("DeviceW"), tr("Player"), QStringLiteral("cmdTestton1"));
    headphones_ = AddDevice(QStringLiteral("Device"), tr("Kopfhörer"), QStringLiteral("cmdTestton2"));
    buffer_ = AddChoice(QStringLiteral("Puffer"), tr("Puffer"), OutputBuffer::Names());
    result_ = Named(new QLabel(this), QStringLiteral("lblTestton"), tr("Ergebnis des Testtons"));
    result_->setWordWrap(true);
    AddRow(result_);
    AddHint(tr("Der Testton klingt erst links, dann rechts. Der Kopfhörer braucht eine eigene Soundkarte. „sicher“ "
               "hilft gegen Aussetzer auf langsamen Rechnern, „schnell“ verkürzt die Verzögerung; ein anderer Puffer "
               "gilt vom nächsten Start an."));
}

QComboBox* OptionSoundPage::AddDevice(const QString& name, const QString& caption, const QString& toneName) {
    auto* row = new RingRoom(this);
    auto* list = Named(new QComboBox(row), name, caption);
    list->addItems(devices_);
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setMinimumContentsLength(12);
    row->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto* tone = Named(new QPushButton(tr("Testton"), row), toneName, tr("Testton: ") + caption);
    tone->setAutoDefault(false);
    tone->setEnabled(false);
    connect(tone, &QPushButton::clicked, this, [this, list] { Q_EMIT ToneRequested(TakeDevice(*list).device); });
    connect(list, &QComboBox::currentIndexChanged, this, [list, tone](int device) {
        list->setToolTip(list->itemText(device));
        tone->setEnabled(device > audio::kNoSound && !list->itemData(device, goneRole).toBool());
    });
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(focusRingMargin, focusRingMargin, focusRingMargin, focusRingMargin);
    layout->addWidget(list, 1);
    layout->addWidget(tone);
    row->setFocusProxy(list);
    AddRow(caption, row);
    return list;
}

/** A device that is not plugged in at present stays chosen, under its name. */
void OptionSoundPage::ShowDevice(QComboBox& list, const OutputChoice& choice) {
    const int known = list.findText(choice.name);
    if (known >= 0 || (choice.name.isEmpty() && choice.device >= 0 && choice.device < list.count())) {
        list.setCurrentIndex(known >= 0 ? known : choice.device);
        return;
    }
    const QString name = choice.name.isEmpty() ? tr("Gerät %1").arg(choice.device) : choice.name;
    list.addItem(name + tr(" (nicht angeschlossen)"), QVariant::fromValue(choice.device));
    list.setItemData(list.count() - 1, choice.name, Qt::ToolTipRole);
    list.setItemData(list.count() - 1, true, goneRole);
    list.setCurrentIndex(list.count() - 1);
}

OutputChoice OptionSoundPage::TakeDevice(const QComboBox& list) {
    if (list.currentData(goneRole).toBool())
        return {list.currentData().toInt(), list.currentData(Qt::ToolTipRole).toString()};
    return {list.currentIndex(), list.currentText()};
}

void OptionSoundPage::Show(const OptionValues& values) {
    ShowDevice(*output_, values.output);
    ShowDevice(*headphones_, values.headphones);
    buffer_->setCurrentText(values.buffer);
}

void OptionSoundPage::Take(OptionValues& values) const {
    const auto take = [](OutputChoice& choice, const QComboBox& list) {
        const OutputChoice shown = TakeDevice(list);
        // Files of older programs hold the number alone; that counts as unchanged.
        if (!(choice.name.isEmpty() && choice.device == shown.device))
            choice = shown;
    };
    take(values.output, *output_);
    take(values.headphones, *headphones_);
    values.buffer = buffer_->currentText();
}

void OptionSoundPage::ShowToneResult(const QString& text) {
    result_->setText(text.isEmpty() ? tr("Der Testton wird abgespielt.") : text);
}

} // namespace kalvo
