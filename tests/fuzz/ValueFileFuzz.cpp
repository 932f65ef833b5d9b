// Value files: whatever could be read is written in a form that gives the same values.

#include "FuzzInput.h"

#include "base/PlainText.h"
#include "base/ValueFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray file = kalvo::fuzz::Input(data, size).Rest();
    const QStringList values = kalvo::ValueFile::Parse(file);
    QList<kalvo::ValueFile::Value> written;
    for (const QString& value : values)
        written.append(value);
    const QByteArray bytes = kalvo::ValueFile::Bytes(written);
    kalvo::fuzz::Require(bytes.endsWith("\r\n") && bytes.count('\n') == 1, "one line");
    kalvo::fuzz::Require(kalvo::PlainText::IsText(bytes), "what was written looks like text");
    if (kalvo::PlainText::IsText(file))
        kalvo::fuzz::Require(kalvo::ValueFile::Parse(bytes) == values, "values come back");
    return 0;
}
