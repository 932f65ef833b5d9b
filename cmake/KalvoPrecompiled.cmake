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

# kalvo_unite(TARGET): with KALVO_UNITE several sources are compiled as one, which takes half the time when everything is
# built once, for a check, and more when a file is changed. Names in unnamed namespaces are unique within a folder for it.
function(kalvo_unite target)
  if(KALVO_UNITE)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
    # Of other files' names; of unnamed namespaces, since the source is an included file then.
    target_compile_options(${target} PRIVATE -Wno-shadow $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
  endif()
endfunction()
