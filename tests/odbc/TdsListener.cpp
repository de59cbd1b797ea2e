#include "TdsListener.h"

#include <QByteArray>
#include <QtEndian>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zephrin::test {

namespace {

constexpr char preLogin = 0x12, login = 0x10, answer = 0x04;

QByteArray Take(int connection, qsizetype length) {
    QByteArray bytes(length, 0);
    qsizetype at = 0;
    while (at < length) {
        const ssize_t read = ::recv(connection, bytes.data() + at, size_t(length - at), 0);
        if (read <= 0) return {};
        at += read;
    }
    return bytes;
}

/// A field of the login: its place in the packet, then its text, which a password has in a thin disguise.
QString Field(const QByteArray& packet, int index, bool disguised = false) {
    const qsizetype entry = 36 + 4 * index;
    if (packet.size() < entry + 4) return {};
    const auto offset = qFromLittleEndian<quint16>(packet.data() + entry);
    const auto length = qFromLittleEndian<quint16>(packet.data() + entry + 2);
    QByteArray text = packet.mid(offset, 2 * length);
    for (char& byte : text) {
        if (!disguised) break;
        const auto plain = quint8(quint8(byte) ^ 0xa5);
        byte = char(plain >> 4 | plain << 4);
    }
    QString result;
    for (qsizetype at = 0; at + 1 < text.size(); at += 2)
        result += QChar(qFromLittleEndian<quint16>(text.data() + at));
    return result;
}

int EncryptionAskedFor(const QByteArray& packet) {
    for (qsizetype at = 0; at + 4 < packet.size() && packet[at] != char(0xff); at += 5)
        if (packet[at] == 1) return packet.at(qFromBigEndian<quint16>(packet.data() + at + 1));
    return -1;
}

QByteArray PreLoginAnswer(bool encrypts) {
    QByteArray body = QByteArray::fromHex("00000b0006010011 0001ff 0f0000000000");
    body += char(encrypts ? 1 : 2);
    return QByteArray(1, answer) + QByteArray::fromHex("01") + QByteArray(1, 0) + char(8 + body.size()) +
           QByteArray(4, 0) + body;
}

}  // namespace

TdsListener::TdsListener(Answer itsAnswer) : answers(itsAnswer), socket(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    ::bind(socket, reinterpret_cast<sockaddr*>(&address), length);
    ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &length);
    port = ntohs(address.sin_port);
    ::listen(socket, 8);
    thread = std::thread([this] { Listen(); });
}

TdsListener::~TdsListener() {
    Heard();
    ::close(socket);
}

QStringList TdsListener::Heard() {
    ::shutdown(socket, SHUT_RDWR);
    if (thread.joinable()) thread.join();
    return heard;
}

void TdsListener::Listen() {
    for (;;) {
        const int connection = ::accept(socket, nullptr, nullptr);
        if (connection < 0) return;
        const timeval patience{5, 0};
        ::setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        Serve(connection);
        ::close(connection);
    }
}

void TdsListener::Serve(int connection) {
    for (;;) {
        const QByteArray head = Take(connection, 8);
        if (head.isEmpty()) return;
        const QByteArray packet = Take(connection, qFromBigEndian<quint16>(head.data() + 2) - 8);
        if (head[0] == preLogin && packet.startsWith(char(0x16))) {
            heard << QStringLiteral("TLS");
            return;
        }
        if (head[0] == preLogin) {
            heard << QStringLiteral("asks for encryption: %1").arg(EncryptionAskedFor(packet));
            if (answers == Answer::HangUp) return;
            const QByteArray reply = PreLoginAnswer(answers == Answer::Required);
            ::send(connection, reply.data(), size_t(reply.size()), MSG_NOSIGNAL);
        } else if (head[0] == login) {
            heard << QStringLiteral("clear: %1 %2 %3")
                         .arg(Field(packet, 1), Field(packet, 2, true), Field(packet, 3));
            return;
        } else {
            heard << QStringLiteral("old: %1").arg(packet.contains("secret"));
            return;
        }
    }
}

}  // namespace zephrin::test
