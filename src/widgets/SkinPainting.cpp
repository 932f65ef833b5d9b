#include "widgets/SkinPainting.h"

#include "widgets/ButtonPainting.h"
#include "widgets/Icons.h"
#include "widgets/MainButton.h"
#include "widgets/RingRoom.h"
#include "widgets/SkinStyle.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace kalvo {

namespace {

void DrawIcon(QPainter& painter, const QString& name, const QRect& rect, const QColor& colour, int size) {
    const QPoint corner(rect.x() + (rect.width() - size) / 2, rect.y() + (rect.height() - size) / 2);
    painter.drawPixmap(corner, Icons::Pixmap(name, colour, size, painter.device()->devicePixelRatioF()));
}

QColor InkOf(const QStyleOption& option) {
    const Skin& skin = SkinStyle::Colours();
    return option.state & QStyle::State_Enabled ? skin.text : skin.dim;
}

/** What a window is there for looks switched on; pressed it does as all others. */
QStyle::State StateOf(const QStyleOption& option, const QWidget* widget) {
    const bool isMain = widget != nullptr && IsMainButton(*widget) && !(option.state & QStyle::State_Sunken);
    return isMain ? option.state | QStyle::State_On : option.state;
}

void DrawPushButton(QPainter& painter, const QStyleOption& option, const QWidget* widget) {
    const QRect rect = option.rect.adjusted(focusRingMargin, focusRingMargin, -focusRingMargin, -focusRingMargin);
    PaintButton(painter, rect, ColoursOf(StateOf(option, widget)));
    if (option.state & QStyle::State_HasFocus)
        PaintFocusRing(painter, rect);
}

void DrawToolButton(QPainter& painter, const QStyleOption& option) {
    const QStyle::State active = QStyle::State_On | QStyle::State_Sunken | QStyle::State_MouseOver;
    if (!(option.state & QStyle::State_AutoRaise) || (option.state & active))
        PaintButton(painter, option.rect, ColoursOf(option.state));
}

void DrawBranch(QPainter& painter, const QStyleOption& option) {
    if (!(option.state & QStyle::State_Children))
        return;
    const Skin& skin = SkinStyle::Colours();
    const QColor colour = option.state & QStyle::State_Selected ? skin.highlightText : skin.dim;
    DrawIcon(painter, option.state & QStyle::State_Open ? QStringLiteral("drop-down") : QStringLiteral("unfold"),
             option.rect, colour, SkinStyle::Units().F());
}

void DrawComboBox(QPainter& painter, const QStyleOptionComboBox& option) {
    const FontUnits& units = SkinStyle::Units();
    QStyle::State state = option.state & ~(QStyle::State_On | QStyle::State_Sunken);
    ButtonColours colours = ColoursOf(state);
    if (option.editable)
        colours.fill = SkinStyle::Colours().base;
    PaintButton(painter, option.rect, colours);
    if (state & QStyle::State_HasFocus) {
        colours.edge = colours.fill = SkinStyle::Colours().highlight;
        colours.fill.setAlpha(0);
        PaintButton(painter, option.rect, colours);
        PaintButton(painter, option.rect.adjusted(1, 1, -1, -1), colours);
    }
    const int size = units.F();
    const QRect arrow(option.rect.right() - size - units.Gap(1), option.rect.y(), size, option.rect.height());
    DrawIcon(painter, QStringLiteral("drop-down"), arrow, SkinStyle::Colours().dim, size);
}

int StepButtonWidth() {
    return SkinStyle::Units().F() + SkinStyle::Units().Gap(1);
}

/** Place of an input's step button: the upper or the lower half of its right end. */
QRect StepButton(const QRect& box, bool up) {
    const QRect both(box.right() - StepButtonWidth(), box.y() + 1, StepButtonWidth(), box.height() - 2);
    return up ? both.adjusted(0, 0, 0, -both.height() / 2) : both.adjusted(0, both.height() / 2, 0, 0);
}

void DrawStep(QPainter& painter, const QStyleOptionSpinBox& option, bool up) {
    const Skin& skin = SkinStyle::Colours();
    const QRect place = StepButton(option.rect, up);
    const bool possible =
        option.stepEnabled & (up ? QAbstractSpinBox::StepUpEnabled : QAbstractSpinBox::StepDownEnabled);
    const bool isActive = option.activeSubControls & (up ? QStyle::SC_SpinBoxUp : QStyle::SC_SpinBoxDown);
    if (isActive && possible && (option.state & QStyle::State_Sunken))
        painter.fillRect(place, skin.line);
    painter.save();
    painter.translate(place.center());
    painter.rotate(up ? 180 : 0);
    const int size = place.height();
    DrawIcon(painter, QStringLiteral("drop-down"), QRect(-size / 2, -size / 2, size, size),
             possible && (option.state & QStyle::State_Enabled) ? skin.text : skin.line,
             qMin(size, SkinStyle::Units().F()));
    painter.restore();
}

void DrawSpinBox(QPainter& painter, const QStyleOptionSpinBox& option) {
    const Skin& skin = SkinStyle::Colours();
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool focused = option.state & QStyle::State_HasFocus;
    const QColor edge = focused ? skin.highlight : enabled ? skin.edge : skin.line;
    const QColor fill = enabled ? skin.base : skin.window;
    PaintButton(painter, option.rect, {fill, edge, skin.text});
    if (focused)
        PaintButton(painter, option.rect.adjusted(1, 1, -1, -1), {fill, edge, skin.text});
    DrawStep(painter, option, true);
    DrawStep(painter, option, false);
}

/** A range that is even about 0 gets a centre mark, every other one is filled from its start. */
void DrawSlider(QPainter& painter, const QStyleOptionSlider& option, const QRect& handle) {
    const Skin& skin = SkinStyle::Colours();
    const int thick = qMax(3, SkinStyle::Units().Of(0.3));
    const bool horizontal = option.orientation == Qt::Horizontal;
    const auto line = [&](int from, int to) {
        return horizontal ? QRect(from, option.rect.center().y() - thick / 2, to - from, thick)
                          : QRect(option.rect.center().x() - thick / 2, from, thick, to - from);
    };
    const int end = horizontal ? option.rect.right() + 1 : option.rect.bottom() + 1;
    painter.fillRect(line(0, end), skin.line);
    painter.fillRect(line(0, end).adjusted(1, 1, -1, -1), skin.waveBack);
    const bool enabled = option.state & QStyle::State_Enabled;
    if (option.minimum == -option.maximum) {
        const QPoint middle = option.rect.center();
        painter.fillRect(horizontal ? QRect(middle.x(), 0, 1, option.rect.height())
                                    : QRect(0, middle.y(), option.rect.width(), 1),
                         skin.edge);
    } else if (enabled) {
        painter.fillRect(horizontal ? line(0, handle.center().x()) : line(handle.center().y(), end), skin.highlight);
    }
    const QStyle::State state = option.activeSubControls & QStyle::SC_SliderHandle
                                    ? option.state
                                    : option.state & ~(QStyle::State_Sunken | QStyle::State_MouseOver);
    const ButtonColours colours = ColoursOf(state & ~QStyle::State_On);
    PaintButton(painter, handle, {enabled ? colours.fill : skin.panel, colours.edge, colours.ink});
    const int inset = qRound((horizontal ? handle.height() : handle.width()) * 0.22);
    painter.fillRect(horizontal ? QRect(handle.center().x(), handle.y() + inset, 2, handle.height() - 2 * inset)
                                : QRect(handle.x() + inset, handle.center().y(), handle.width() - 2 * inset, 2),
                     colours.ink);
    if (option.state & QStyle::State_HasFocus)
        PaintFocusRing(painter, handle);
}

} // namespace

SkinPainting::SkinPainting() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void SkinPainting::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
    switch (element) {
    case PE_PanelButtonCommand:
        return DrawPushButton(*painter, *option, widget);
    case PE_PanelButtonTool:
        return DrawToolButton(*painter, *option);
    case PE_FrameFocusRect:
        if (qobject_cast<const QAbstractButton*>(widget) && !widget->inherits("QPushButton"))
            PaintFocusRing(*painter, option->rect.adjusted(3, 3, -3, -3));
        return;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        return PaintCheckBox(*painter, option->rect, option->state);
    case PE_IndicatorRadioButton:
        return PaintRadioButton(*painter, option->rect, option->state);
    case PE_IndicatorBranch:
        return DrawBranch(*painter, *option);
    case PE_PanelMenu:
        painter->fillRect(option->rect, SkinStyle::Colours().edge);
        painter->fillRect(option->rect.adjusted(1, 1, -1, -1), SkinStyle::Colours().panel);
        return;
    case PE_IndicatorArrowDown:
        return DrawIcon(*painter, QStringLiteral("drop-down"), option->rect, InkOf(*option), SkinStyle::Units().F());
    case PE_IndicatorArrowRight:
        return DrawIcon(*painter, QStringLiteral("unfold"), option->rect, InkOf(*option), SkinStyle::Units().F());
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void SkinPainting::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    const Skin& skin = SkinStyle::Colours();
    const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option);
    if (element == CE_ProgressBarGroove) {
        painter->fillRect(option->rect, skin.edge);
        painter->fillRect(option->rect.adjusted(1, 1, -1, -1), skin.base);
        return;
    }
    if (element == CE_ProgressBarContents && bar && bar->maximum > bar->minimum) {
        QRect filled = option->rect.adjusted(1, 1, -1, -1);
        const double share = double(bar->progress - bar->minimum) / (double(bar->maximum) - bar->minimum);
        filled.setWidth(qRound(filled.width() * qBound(0.0, share, 1.0)));
        painter->fillRect(filled, skin.highlight);
        return;
    }
    if (element == CE_ToolButtonLabel && widget && widget->objectName() == QStringLiteral("qt_menubar_ext_button"))
        return DrawIcon(*painter, QStringLiteral("unfold"), option->rect, skin.text, SkinStyle::Units().Icon());
    if (element == CE_ProgressBarLabel && bar) {
        QStyleOptionProgressBar spaced(*bar);
        spaced.text.replace(u'%', QStringLiteral(" %"));
        return QProxyStyle::drawControl(element, &spaced, painter, widget);
    }
    if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        element == CE_MenuItem && item && item->menuItemType == QStyleOptionMenuItem::Separator) {
        const QRect& place = option->rect;
        painter->fillRect(place.x(), place.center().y(), place.width(), 1, skin.line);
        return;
    }
    if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
        element == CE_PushButtonLabel && button) {
        // The text's colour follows the fill; Fusion would take the palette's for a switched-on button too.
        QStyleOptionButton coloured(*button);
        coloured.palette.setColor(QPalette::ButtonText, ColoursOf(StateOf(*button, widget)).ink);
        return QProxyStyle::drawControl(element, &coloured, painter, widget);
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void SkinPainting::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                      const QWidget* widget) const {
    if (const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option); control == CC_ComboBox && box)
        return DrawComboBox(*painter, *box);
    if (const auto* box = qstyleoption_cast<const QStyleOptionSpinBox*>(option); control == CC_SpinBox && box)
        return DrawSpinBox(*painter, *box);
    if (const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option); control == CC_Slider && slider)
        return DrawSlider(*painter, *slider, proxy()->subControlRect(CC_Slider, option, SC_SliderHandle, widget));
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect SkinPainting::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    if (element == SE_PushButtonLayoutItem)
        return option->rect.adjusted(focusRingMargin, focusRingMargin, -focusRingMargin, -focusRingMargin);
    if (element == SE_FrameLayoutItem && qobject_cast<const RingRoom*>(widget))
        return option->rect.adjusted(focusRingMargin, focusRingMargin, -focusRingMargin, -focusRingMargin);
    if (element == SE_ProgressBarContents || element == SE_ProgressBarGroove)
        return option->rect;
    return QProxyStyle::subElementRect(element, option, widget);
}

QRect SkinPainting::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                   const QWidget* widget) const {
    const FontUnits& units = SkinStyle::Units();
    if (control == CC_ComboBox && part == SC_ComboBoxEditField)
        return option->rect.adjusted(units.Of(0.45), 1, -units.F() - units.Gap(2), -1);
    if (control == CC_SpinBox && (part == SC_SpinBoxUp || part == SC_SpinBoxDown))
        return StepButton(option->rect, part == SC_SpinBoxUp);
    if (control == CC_SpinBox && part == SC_SpinBoxEditField)
        return option->rect.adjusted(units.Of(0.45), 2, -StepButtonWidth() - 2, -2);
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_Slider && part == SC_SliderHandle && slider) {
        const bool horizontal = slider->orientation == Qt::Horizontal;
        const int length = pixelMetric(PM_SliderLength, option, widget);
        const int span = (horizontal ? slider->rect.width() : slider->rect.height()) - length;
        const int place =
            sliderPositionFromValue(slider->minimum, slider->maximum, slider->sliderPosition, span, slider->upsideDown);
        const int across = qMin(units.Of(1.5), horizontal ? slider->rect.height() : slider->rect.width());
        const int offset = ((horizontal ? slider->rect.height() : slider->rect.width()) - across) / 2;
        return horizontal ? QRect(place, offset, length, across) : QRect(offset, place, across, length);
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize SkinPainting::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                     const QWidget* widget) const {
    const FontUnits& units = SkinStyle::Units();
    switch (type) {
    case CT_PushButton:
        return {size.width() + units.Of(1.8) + 2 * focusRingMargin,
                qMax(units.Button(), size.height() + units.Gap(1)) + 2 * focusRingMargin};
    case CT_ComboBox:
        return {size.width() + units.Of(0.9) + units.F() + units.Gap(2), units.Button()};
    case CT_SpinBox:
        return {size.width() + units.Of(0.9) + StepButtonWidth(), units.Button()};
    case CT_ToolButton:
        return {qMax(size.width() + units.Gap(2), units.Button()), qMax(size.height() + units.Gap(1), units.Button())};
    case CT_ItemViewItem: {
        const QSize plain = QProxyStyle::sizeFromContents(type, option, size, widget);
        return {plain.width(), qMax(plain.height(), units.TableRow())};
    }
    default:
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    }
}

int SkinPainting::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    const FontUnits& units = SkinStyle::Units();
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return units.Of(1.15);
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return units.Of(0.5);
    case PM_ButtonIconSize:
    case PM_SmallIconSize:
        return units.Icon();
    case PM_SliderLength:
        return units.Of(0.85);
    case PM_SliderThickness:
    case PM_SliderControlThickness:
        return units.Of(1.7);
    case PM_FocusFrameHMargin:
        // Beside the text of an item view's cell, which adds one pixel.
        return units.Of(0.45) - 1;
    case PM_SplitterWidth:
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
        return units.Gap(2);
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
        return units.Gap(widget != nullptr && widget->isWindow() ? 4 : 3);
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_ButtonDefaultIndicator:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int SkinPainting::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* returnData) const {
    switch (hint) {
    case SH_EtchDisabledText:
        return 0;
    case SH_Menu_Scrollable: // too long for the screen: scrolled rather than in columns all over the desk
        return 1;
    case SH_Slider_AbsoluteSetButtons:
        return Qt::LeftButton;
    case SH_DialogButtonLayout: // what is wanted stands at the end, as in all other windows
        return QDialogButtonBox::GnomeLayout;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

} // namespace kalvo
