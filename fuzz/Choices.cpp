#include "fuzz/Choices.h"

namespace zephrin::fuzz {

int Choices::Below(int count) {
    if (AtEnd() || count <= 1) return 0;
    const auto byte = static_cast<quint8>(input.at(at++));
    if (count <= 256) return byte % count;
    return ((byte << 8) | static_cast<quint8>(AtEnd() ? 0 : input.at(at++))) % count;
}

qint64 Choices::Number() {
    const int length = Below(9);
    quint64 number = 0;
    for (int byte = 0; byte < length && !AtEnd(); ++byte)
        number = (number << 8) | static_cast<quint8>(input.at(at++));
    return Flip() ? -static_cast<qint64>(number >> 1) : static_cast<qint64>(number >> 1);
}

QByteArray Choices::Bytes(int most) {
    const qsizetype length = std::min<qsizetype>(Below(most + 1), input.size() - at);
    const QByteArray bytes = input.mid(at, length);
    at += length;
    return bytes;
}

QString Choices::Text(int most) {
    const bool asUnits = Flip();
    const QByteArray bytes = Bytes(most);
    if (!asUnits) return QString::fromUtf8(bytes);
    QString text;
    for (qsizetype unit = 0; unit + 1 < bytes.size(); unit += 2)
        text += QChar(static_cast<char16_t>((static_cast<quint8>(bytes[unit]) << 8) |
                                            static_cast<quint8>(bytes[unit + 1])));
    return text;
}

}  // namespace zephrin::fuzz
