#include "base/ModuleFile.h"

#include <QFile>

#ifdef Q_OS_LINUX
#include <cstring>
#include <elf.h>
#endif

namespace kalvo {

bool IsWholeModule(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
#ifdef Q_OS_LINUX
    // The table of sections is the last thing in the file: when it is there, so is everything that gets mapped.
    Elf64_Ehdr head;
    const QByteArray bytes = file.read(sizeof head);
    if (bytes.size() != qsizetype(sizeof head))
        return false;
    std::memcpy(&head, bytes.constData(), sizeof head);
    const bool named = std::memcmp(head.e_ident, ELFMAG, SELFMAG) == 0 && head.e_ident[EI_CLASS] == ELFCLASS64;
    const quint64 end = head.e_shoff + quint64(head.e_shnum) * head.e_shentsize;
    return named && head.e_shoff > 0 && end >= head.e_shoff && end <= quint64(file.size());
#else
    return file.size() > 0;
#endif
}

} // namespace kalvo
