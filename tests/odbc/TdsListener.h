#pragma once

#include <QString>
#include <QStringList>

#include <thread>

namespace zephrin::test {

/// A port of loopback that takes what a driver for SQL Server sends first, tells it in short, and hangs up.
class TdsListener {
 public:
    /// What it says when it is asked whether it encrypts: hangs up without a word, never, or always.
    enum class Answer { HangUp, NotSupported, Required };

    explicit TdsListener(Answer answer);
    ~TdsListener();

    int Port() const { return port; }
    /// One text a packet: "asks for encryption: N", "TLS", "clear: USER PASSWORD APPLICATION", "old: " and
    /// whether the text `secret` was in it. Ends the listening.
    QStringList Heard();

 private:
    void Listen();
    void Serve(int connection);

    const Answer answers;
    int socket = -1;
    int port = 0;
    QStringList heard;
    std::thread thread;
};

}  // namespace zephrin::test
