#include "support/NamedPipe.h"

#include <QFile>

#include <chrono>
#include <future>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

NamedPipe::NamedPipe(QString path) : m_path(std::move(path))
{
#ifdef Q_OS_UNIX
    m_valid = ::mkfifo(QFile::encodeName(m_path).constData(), 0600) == 0;
#endif
}

NamedPipe::~NamedPipe()
{
    releaseWaitingReader();
    if (m_valid)
        QFile::remove(m_path);
}

void NamedPipe::releaseWaitingReader() const
{
#ifdef Q_OS_UNIX
    // Opening the writing end succeeds only while someone waits to read; closing it at once
    // hands that reader the end of the data.
    if (!m_valid)
        return;
    const int fd = ::open(QFile::encodeName(m_path).constData(), O_WRONLY | O_NONBLOCK);
    if (fd >= 0)
        ::close(fd);
#endif
}

bool NamedPipe::ReturnsWithoutWaiting(const std::function<void()>& read)
{
    std::future<void> done = std::async(std::launch::async, read);
    const bool returned = done.wait_for(std::chrono::seconds(5)) == std::future_status::ready;
    while (done.wait_for(std::chrono::milliseconds(50)) != std::future_status::ready)
        releaseWaitingReader();
    return returned;
}
