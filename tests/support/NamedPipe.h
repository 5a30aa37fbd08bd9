#pragma once

#include <QString>

#include <functional>

/// A named pipe that nobody writes to, for checking that readers of files do not wait on one.
/// Whatever reader is still waiting to open it is let go when the pipe goes out of scope.
class NamedPipe
{
public:
    explicit NamedPipe(QString path);
    ~NamedPipe();
    NamedPipe(const NamedPipe&) = delete;
    NamedPipe& operator=(const NamedPipe&) = delete;

    /// False where named pipes cannot be made; the caller then skips its check.
    bool IsValid() const { return m_valid; }
    const QString& Path() const { return m_path; }

    /// Runs @p read on another thread and tells whether it came back within a few seconds. A
    /// reader that hangs is released, so that a fault fails the test instead of stalling it.
    bool ReturnsWithoutWaiting(const std::function<void()>& read);

private:
    void releaseWaitingReader() const;

    QString m_path;
    bool m_valid = false;
};
