// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include <vorsk/extension.h>

#include <QBuffer>
#include <QDataStream>

#include <cstdio>

#include <recordingformat/recordingformat.h>
#include <recordstream/elementstream.h>
#include <uiabstraction/uielement.h>

using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

namespace {

class OwnExtension final : public Vorsk::Extension {
public:
    void initialize(Vorsk::WrapperContext*) override {}
};

} // namespace

int main() {
    OwnExtension extension;
    extension.name = "own";

    UIElement element(QStringLiteral("QPushButton"), StandardType(QStringLiteral("Button")),
                      QStringLiteral("id"));
    element.setText(QString::fromStdString(extension.name));
    QByteArray bytes;
    QDataStream writing(&bytes, QIODevice::WriteOnly);
    writing.setVersion(QDataStream::Qt_4_6);
    writing << element;

    QDataStream reading(bytes);
    reading.setVersion(QDataStream::Qt_4_6);
    const auto copy = Vorsk::RecordStream::readElement(reading);
    if (copy == nullptr || !copy->isEqualTo(element)) {
        return 1;
    }
    std::printf("an element of %d bytes came back; recordings have version %u\n",
                static_cast<int>(bytes.size()), RecordingFormat::version);
    return 0;
}
