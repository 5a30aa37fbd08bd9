#include "DocumentRepository.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

const QLatin1String kSuffix(".trove");
// A state file is a handful of short lines; anything longer is not one.
constexpr qint64 kMaxStateFileBytes = 4096;

struct StateRecord
{
    bool present = false;
    QString state;
    QString user;
};

StateRecord readState(const QString& path)
{
    StateRecord record;
    QFile file(DocumentRepository::StateFile(path));
    if (!file.open(QIODevice::ReadOnly))
        return record;
    record.present = true;
    const QByteArray bytes = file.read(kMaxStateFileBytes);
    for (const QByteArray& line : bytes.split('\n')) {
        const int equals = line.indexOf('=');
        if (equals <= 0)
            continue;
        const QString key = QString::fromUtf8(line.left(equals)).trimmed();
        const QString value = QString::fromUtf8(line.mid(equals + 1)).trimmed();
        if (key == QLatin1String("state"))
            record.state = value;
        else if (key == QLatin1String("user"))
            record.user = value;
    }
    return record;
}

QString loginName()
{
    QString user = qEnvironmentVariable("USER");
    if (user.isEmpty())
        user = qEnvironmentVariable("USERNAME");
    return user.isEmpty() ? QStringLiteral("me") : user;
}

} // namespace

DocumentRepository::DocumentRepository(QString folder, QString user)
    : m_folder(QFileInfo(folder).absoluteFilePath()),
      m_user(user.isEmpty() ? loginName() : std::move(user))
{}

QString DocumentRepository::StateFile(const QString& path)
{
    return path + kSuffix;
}

bool DocumentRepository::Contains(const QString& path) const
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    return absolute.startsWith(m_folder + QLatin1Char('/')) && QFile::exists(StateFile(absolute));
}

RepositoryState DocumentRepository::State(const QString& path) const
{
    if (!Contains(path))
        return RepositoryState::NotInRepository;
    const StateRecord record = readState(QFileInfo(path).absoluteFilePath());
    if (record.state == QLatin1String("checked-out"))
        return record.user == m_user ? RepositoryState::CheckedOutByMe
                                     : RepositoryState::CheckedOutByOther;
    if (record.state == QLatin1String("out-of-date"))
        return RepositoryState::OutOfDate;
    return RepositoryState::CheckedIn;
}

QString DocumentRepository::Holder(const QString& path) const
{
    const RepositoryState state = State(path);
    if (state != RepositoryState::CheckedOutByMe && state != RepositoryState::CheckedOutByOther)
        return {};
    return readState(QFileInfo(path).absoluteFilePath()).user;
}

QString DocumentRepository::Describe(const QString& path) const
{
    switch (State(path)) {
    case RepositoryState::NotInRepository:
        return QStringLiteral("Not in the repository");
    case RepositoryState::CheckedIn:
        return QStringLiteral("Checked in");
    case RepositoryState::CheckedOutByMe:
        return QStringLiteral("Checked out by you");
    case RepositoryState::CheckedOutByOther:
        return QStringLiteral("Checked out by %1").arg(Holder(path));
    case RepositoryState::OutOfDate:
        return QStringLiteral("Out of date: a newer version is in the repository");
    }
    return {};
}

QString DocumentRepository::write(const QString& path, const QString& state, const QString& user)
{
    QSaveFile file(StateFile(path));
    QByteArray bytes = "state=" + state.toUtf8() + '\n';
    if (!user.isEmpty())
        bytes += "user=" + user.toUtf8() + '\n';
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return QStringLiteral("The repository state of \"%1\" cannot be written: %2.")
            .arg(QFileInfo(path).fileName(), file.errorString());
    return {};
}

QString DocumentRepository::CheckOut(const QString& path)
{
    const QString name = QFileInfo(path).fileName();
    switch (State(path)) {
    case RepositoryState::NotInRepository:
        return QStringLiteral("\"%1\" is not in the repository.").arg(name);
    case RepositoryState::CheckedOutByMe:
        return QStringLiteral("You have \"%1\" checked out already.").arg(name);
    case RepositoryState::CheckedOutByOther:
        return QStringLiteral("\"%1\" is checked out by %2.").arg(name, Holder(path));
    case RepositoryState::OutOfDate:
        return QStringLiteral("\"%1\" is out of date: get the latest version first.").arg(name);
    case RepositoryState::CheckedIn:
        break;
    }
    return write(path, QStringLiteral("checked-out"), m_user);
}

QString DocumentRepository::CheckIn(const QString& path)
{
    if (State(path) != RepositoryState::CheckedOutByMe)
        return QStringLiteral("\"%1\" is not checked out by you.").arg(QFileInfo(path).fileName());
    return write(path, QStringLiteral("checked-in"), {});
}

QString DocumentRepository::UndoCheckOut(const QString& path)
{
    return CheckIn(path);
}

QString DocumentRepository::GetLatest(const QString& path)
{
    if (State(path) != RepositoryState::OutOfDate)
        return QStringLiteral("\"%1\" is up to date.").arg(QFileInfo(path).fileName());
    return write(path, QStringLiteral("checked-in"), {});
}

QString DocumentRepository::Add(const QString& path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    if (!absolute.startsWith(m_folder + QLatin1Char('/')))
        return QStringLiteral("\"%1\" is outside the repository folder.").arg(path);
    if (Contains(absolute))
        return {};
    return write(absolute, QStringLiteral("checked-in"), {});
}

QStringList DocumentRepository::Documents() const
{
    QStringList found;
    QDirIterator it(m_folder, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (!path.endsWith(kSuffix))
            found << path;
    }
    found.sort();
    return found;
}

void DocumentRepository::SeedSample(const QString& someoneElse)
{
    const QStringList documents = Documents();
    for (const QString& path : documents)
        if (QFile::exists(StateFile(path)))
            return;
    for (const QString& path : documents) {
        const QString name = QFileInfo(path).fileName();
        if (name == QLatin1String("Grid.dwg"))
            write(path, QStringLiteral("checked-out"), m_user);
        else if (name == QLatin1String("Columns.dwg"))
            write(path, QStringLiteral("checked-out"), someoneElse);
        else if (name == QLatin1String("Survey.pdf"))
            write(path, QStringLiteral("out-of-date"), {});
        else
            write(path, QStringLiteral("checked-in"), {});
    }
}
