#include "widgets/KeySplitter.h"

#include "widgets/ButtonPainting.h"
#include "widgets/SkinStyle.h"
#include "widgets/Spoken.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>

#include <algorithm>
#include <optional>

namespace kalvo {

namespace {

constexpr int kPage = 5;          // steps
constexpr double kGripLength = 3; // font heights
constexpr int kGripThickness = 2; // pixels

class KeyHandle : public QSplitterHandle, public Spoken {
public:
    KeyHandle(Qt::Orientation orientation, QSplitter& splitter) : QSplitterHandle(orientation, &splitter) {
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, const QWidget* now) {
            if (now != this)
                return;
            const auto* other = dynamic_cast<KeyHandle*>(before);
            before_ = other == nullptr ? before : other->before_.data();
        });
    }

    QAccessible::Role SpokenRole() const override { return QAccessible::Splitter; }
    QString SpokenValue() const override { return QStringLiteral("%1 %").arg(Percent(Place())); }
    std::optional<Number> SpokenNumber() const override {
        const auto [least, most] = Range();
        return Number{double(Percent(Place())), double(Percent(least)), double(Percent(most)), 1};
    }
    void SetSpokenNumber(double percent) override { MoveTo(qRound(percent * Length() / 100)); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override {
        start_ = Place();
        QSplitterHandle::focusInEvent(event);
        update();
    }
    void focusOutEvent(QFocusEvent* event) override {
        QSplitterHandle::focusOutEvent(event);
        update();
    }
    void paintEvent(QPaintEvent* event) override;

private:
    bool IsUpright() const { return orientation() == Qt::Horizontal; }
    int Place() const { return IsUpright() ? x() : y(); }
    int Length() const { return std::max(1, IsUpright() ? splitter()->width() : splitter()->height()); }
    int Percent(int place) const { return qRound(100.0 * place / Length()); }
    std::pair<int, int> Range() const {
        int least = 0;
        int most = 0;
        splitter()->getRange(splitter()->indexOf(const_cast<KeyHandle*>(this)), &least, &most);
        return {least, most};
    }
    void MoveTo(int place) {
        const auto [least, most] = Range();
        moveSplitter(std::clamp(place, least, std::max(least, most)));
        QAccessibleValueChangeEvent changed(this, Percent(Place()));
        QAccessible::updateAccessibility(&changed);
    }
    std::optional<int> PlaceFor(int key) const;
    void GiveBack() {
        if (before_ != nullptr && before_->isVisible())
            before_->setFocus(Qt::OtherFocusReason);
        else
            focusNextChild();
    }

    QPointer<QWidget> before_; ///< had the focus
    int start_ = 0;            ///< where the handle was when it got the focus
};

/** Where a key moves the handle to; nothing for other keys. */
std::optional<int> KeyHandle::PlaceFor(int key) const {
    const int step = SkinStyle::Units().F();
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        return Place() - step;
    case Qt::Key_Right:
    case Qt::Key_Down:
        return Place() + step;
    case Qt::Key_PageUp:
        return Place() - kPage * step;
    case Qt::Key_PageDown:
        return Place() + kPage * step;
    case Qt::Key_Home:
        return Range().first;
    case Qt::Key_End:
        return Range().second;
    default:
        return {};
    }
}

void KeyHandle::keyPressEvent(QKeyEvent* event) {
    const Qt::KeyboardModifiers others = event->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    if (others != Qt::NoModifier)
        return QSplitterHandle::keyPressEvent(event);
    if (const std::optional<int> place = PlaceFor(event->key()))
        return MoveTo(*place);
    switch (event->key()) {
    case Qt::Key_Escape:
        MoveTo(start_);
        return GiveBack();
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return GiveBack();
    default:
        QSplitterHandle::keyPressEvent(event);
    }
}

/** A stroke to grip; with the focus a bar in the colour of what is chosen: a ring would not fit between the panels. */
void KeyHandle::paintEvent(QPaintEvent* /*event*/) {
    const Skin& skin = SkinStyle::Colours();
    QPainter painter(this);
    if (hasFocus())
        return PaintButton(painter, rect(), {skin.highlight, skin.text, skin.highlightText});
    const int length = SkinStyle::Units().Of(kGripLength);
    QRect grip(0, 0, IsUpright() ? kGripThickness : length, IsUpright() ? length : kGripThickness);
    grip.moveCenter(rect().center());
    painter.fillRect(grip, underMouse() ? skin.text : skin.edge);
}

} // namespace

KeySplitter::KeySplitter(Qt::Orientation orientation, QWidget* parent) : QSplitter(orientation, parent) {}

void KeySplitter::NameHandle(int index, const QString& objectName, const QString& accessibleName) {
    handle(index)->setObjectName(objectName);
    handle(index)->setAccessibleName(accessibleName);
}

QSplitterHandle* KeySplitter::createHandle() {
    return new KeyHandle(orientation(), *this);
}

} // namespace kalvo
