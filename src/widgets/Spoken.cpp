#include "widgets/Spoken.h"

#include "widgets/IconButton.h"
#include "widgets/SpokenControls.h"

#include <QComboBox>
#include <QLabel>

#include <algorithm>

namespace kalvo {

namespace {

class SpokenWidget : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    SpokenWidget(QWidget* widget, Spoken& spoken) : QAccessibleWidget(widget, spoken.SpokenRole()), spoken_(spoken) {}

    QString text(QAccessible::Text kind) const override {
        const QString value = spoken_.SpokenValue();
        // Some readers know no value in words: they tell the description.
        const bool wanted = kind == QAccessible::Value || kind == QAccessible::Description;
        return wanted && !value.isEmpty() ? value : QAccessibleWidget::text(kind);
    }
    void* interface_cast(QAccessible::InterfaceType kind) override {
        if (kind == QAccessible::ValueInterface && spoken_.SpokenNumber())
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(kind);
    }
    QVariant currentValue() const override { return Number().value; }
    QVariant maximumValue() const override { return Number().most; }
    QVariant minimumValue() const override { return Number().least; }
    QVariant minimumStepSize() const override { return Number().step; }
    void setCurrentValue(const QVariant& value) override {
        const Spoken::Number number = Number();
        if (!number.fixed && widget()->isEnabled())
            spoken_.SetSpokenNumber(std::clamp(value.toDouble(), number.least, number.most));
    }

private:
    Spoken::Number Number() const { return spoken_.SpokenNumber().value_or(Spoken::Number()); }

    Spoken& spoken_;
};

QAccessibleInterface* InterfaceOf(const QString& /*className*/, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr)
        return nullptr;
    if (auto* spoken = dynamic_cast<Spoken*>(object))
        return new SpokenWidget(widget, *spoken);
    if (auto* button = qobject_cast<IconButton*>(object))
        return new SpokenButton(*button);
    if (auto* box = qobject_cast<QComboBox*>(object))
        return new SpokenBox(*box);
    auto* label = qobject_cast<QLabel*>(object);
    return label != nullptr && label->pixmap().isNull() && label->textFormat() != Qt::RichText ? new SpokenLabel(*label)
                                                                                               : nullptr;
}

} // namespace

void Spoken::Install() {
    QAccessible::installFactory(&InterfaceOf);
}

void Spoken::Announce(QWidget& widget) {
    // Readers differ in what they listen to.
    for (const QAccessible::Event kind : {QAccessible::NameChanged, QAccessible::Alert}) {
        QAccessibleEvent event(&widget, kind);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace kalvo
