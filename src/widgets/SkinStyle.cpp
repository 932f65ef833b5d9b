#include "widgets/SkinStyle.h"

#include "widgets/SkinPainting.h"

#include <QApplication>
#include <QPalette>
#include <QPixmapCache>
#include <QScreen>

#include <QRegularExpression>

namespace kalvo {

namespace {

struct Look {
    Skin skin = Skins::Named({});
    FontUnits units;
};

/** The look belongs to the application as its palette and font do, and ends with it. */
class LookHolder : public QObject {
public:
    LookHolder(QApplication& application, Look current) : QObject(&application), look(std::move(current)) {
        setObjectName(QStringLiteral("kalvoLook"));
    }

    Look look;
};

constexpr const char* lookProperty = "kalvoLook";

LookHolder* Holder() {
    return qApp ? static_cast<LookHolder*>(qApp->property(lookProperty).value<QObject*>()) : nullptr;
}

const Look& Current() {
    if (const LookHolder* holder = Holder())
        return holder->look;
    static const Look unapplied;
    return unapplied;
}

QPalette PaletteOf(const Skin& skin) {
    QPalette palette;
    palette.setColor(QPalette::Window, skin.window);
    palette.setColor(QPalette::Base, skin.base);
    palette.setColor(QPalette::Disabled, QPalette::Base, skin.window); // behind a field's number
    palette.setColor(QPalette::AlternateBase, skin.alt);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText, QPalette::ToolTipText}) {
        palette.setColor(role, skin.text);
        palette.setColor(QPalette::Disabled, role, skin.dim);
    }
    palette.setColor(QPalette::PlaceholderText, skin.dim);
    palette.setColor(QPalette::Button, skin.button);
    palette.setColor(QPalette::Mid, skin.edge);
    palette.setColor(QPalette::Dark, skin.edge);
    palette.setColor(QPalette::Midlight, skin.line);
    palette.setColor(QPalette::Light, skin.line);
    palette.setColor(QPalette::ToolTipBase, skin.panel);
    palette.setColor(QPalette::Highlight, skin.highlight);
    palette.setColor(QPalette::HighlightedText, skin.highlightText);
    palette.setColor(QPalette::Link, skin.text);
    return palette;
}

/** $name stands for a colour of the skin, @1.5 for 1.5 font heights in pixels. */
QString Template() {
    return QStringLiteral(R"(
QMenuBar { background: $window; border: 0; }
QMenuBar::item { padding: @0.2px @0.7px; background: transparent; }
QMenuBar::item:selected { background: $highlight; color: $highlightText; }
QStatusBar::item { border: 0; }
QToolTip { background: $panel; color: $text; border: 1px solid $edge; padding: @0.2px; }
QLineEdit { background: $base; border: 1px solid $edge; border-radius: @0.23px; padding: 0 @0.55px;
  min-height: @1.9px; selection-background-color: $highlight; selection-color: $highlightText; }
QLineEdit:focus { border: 2px solid $highlight; padding: 0 @0.45px; }
QLineEdit:disabled { color: $dim; background: transparent; border-color: $line; }
QAbstractItemView { background: $base; alternate-background-color: $alt; color: $text; border: 1px solid $line;
  gridline-color: $grid; selection-background-color: $highlight; selection-color: $highlightText; outline: 0; }
QAbstractItemView:focus { border-color: $text; }
QHeaderView { background: $panel; border: 0; }
QHeaderView::section { background: $panel; color: $text; border: 0; border-right: 1px solid $line;
  border-bottom: 1px solid $line; padding: 0 @0.45px; min-height: @1.8px; }
QTableCornerButton::section { background: $panel; border: 0; border-bottom: 1px solid $line; }
QTabWidget::pane { border: 1px solid $line; background: $panel; }
QTabBar::tab { background: $window; color: $dim; border: 1px solid $line; padding: @0.35px @0.9px; }
QTabBar::tab:selected { background: $panel; color: $text; border-bottom-color: $panel; }
QTabBar::tab:focus { color: $text; border: 1px solid $text; }
QAbstractScrollArea::corner { background: $panel; border: 0; }
QScrollBar:vertical { background: $panel; border: 0; border-left: 1px solid $line; width: @0.85px; margin: 0; }
QScrollBar:horizontal { background: $panel; border: 0; border-top: 1px solid $line; height: @0.85px; margin: 0; }
QScrollBar::handle { background: $edge; border-radius: @0.2px; margin: @0.2px; }
QScrollBar::handle:hover { background: $text; }
QScrollBar::handle:vertical { min-height: @2px; }
QScrollBar::handle:horizontal { min-width: @2px; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: none; }
)");
}

QString ColourNamed(const Skin& skin, const QString& name) {
    const std::pair<const char*, QColor> named[] = {{"window", skin.window},
                                                    {"panel", skin.panel},
                                                    {"base", skin.base},
                                                    {"alt", skin.alt},
                                                    {"text", skin.text},
                                                    {"dim", skin.dim},
                                                    {"edge", skin.edge},
                                                    {"line", skin.line},
                                                    {"grid", skin.grid},
                                                    {"highlight", skin.highlight},
                                                    {"highlightText", skin.highlightText}};
    for (const auto& [token, colour] : named) {
        if (name == QLatin1String(token))
            return colour.name();
    }
    return {};
}

QString StyleSheetOf(const Look& look) {
    static const QRegularExpression token(QStringLiteral(R"(\$([A-Za-z]+)|@([0-9.]+))"));
    const QString source = Template();
    QString sheet;
    qsizetype copied = 0;
    for (QRegularExpressionMatchIterator found = token.globalMatch(source); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        sheet += QStringView(source).mid(copied, match.capturedStart() - copied);
        sheet += match.hasCaptured(1) ? ColourNamed(look.skin, match.captured(1))
                                      : QString::number(look.units.Of(match.captured(2).toDouble()));
        copied = match.capturedEnd();
    }
    sheet += QStringView(source).mid(copied);
    return sheet;
}

} // namespace

void SkinStyle::Apply(QApplication& application, const QString& skin, const QString& schriftgrad,
                      const QString& buttongroesse) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const Look look{Skins::Named(skin),
                    FontUnits(schriftgrad, buttongroesse, screen ? screen->logicalDotsPerInch() : 96)};
    if (LookHolder* holder = Holder()) {
        holder->look = look;
    } else {
        application.setProperty(lookProperty, QVariant::fromValue<QObject*>(new LookHolder(application, look)));
        QApplication::setStyle(new SkinPainting);
    }
    QApplication::setPalette(PaletteOf(look.skin));
    QApplication::setFont(look.units.Font());
    application.setStyleSheet(StyleSheetOf(look));
}

const Skin& SkinStyle::Colours() {
    return Current().skin;
}

const FontUnits& SkinStyle::Units() {
    return Current().units;
}

} // namespace kalvo
