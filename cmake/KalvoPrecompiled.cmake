# Most of a compiler's time goes into reading the same headers again: each kind of target reads them once.
set(kalvoHeadersStd <algorithm> <atomic> <chrono> <functional> <memory> <mutex> <optional> <string> <vector>)
set(kalvoHeadersCore ${kalvoHeadersStd} <QByteArray> <QDir> <QFile> <QHash> <QList> <QObject> <QString> <QStringList>
    <QTimer> <QVariant>)
set(kalvoHeadersWidgets ${kalvoHeadersCore} <QApplication> <QBoxLayout> <QKeyEvent> <QLabel> <QLineEdit> <QMenu>
    <QMouseEvent> <QPainter> <QPushButton> <QTableView>)

# kalvo_precompile(TARGET Std|Core|Widgets [headers...])
function(kalvo_precompile target kind)
  target_precompile_headers(${target} PRIVATE ${kalvoHeaders${kind}} ${ARGN})
endfunction()
