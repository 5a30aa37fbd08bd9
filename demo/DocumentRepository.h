#pragma once

#include <QString>
#include <QStringList>

/// Where a document stands in the repository. The values are the panel's state image indices
/// (0 shows no state image).
enum class RepositoryState {
    NotInRepository = 0,
    CheckedIn = 1,
    CheckedOutByMe = 2,
    CheckedOutByOther = 3,
    OutOfDate = 4,
};

/// A folder used as a document repository. Each document in it may have a small state file
/// beside it ("NAME.EXT.trove") of "key=value" lines:
///
///     state=checked-in | checked-out | out-of-date
///     user=NAME            (who checked it out)
///
/// A document without a state file, or outside the folder, is not in the repository. Unknown
/// keys are ignored; an unreadable or unknown state reads as checked in, the safe assumption
/// (nobody can be holding it).
class DocumentRepository
{
public:
    /// @p user is who "me" is; the login name by default.
    explicit DocumentRepository(QString folder, QString user = {});

    const QString& Folder() const { return m_folder; }
    const QString& User() const { return m_user; }
    bool Contains(const QString& path) const;

    RepositoryState State(const QString& path) const;
    /// Who holds @p path checked out; empty when nobody does.
    QString Holder(const QString& path) const;
    /// A sentence for the state cell's tool tip.
    QString Describe(const QString& path) const;

    // Each returns an empty text when done, else why not; nothing changes then.
    QString CheckOut(const QString& path);
    QString CheckIn(const QString& path);
    QString UndoCheckOut(const QString& path);
    QString GetLatest(const QString& path);
    /// Puts @p path under the repository, checked in.
    QString Add(const QString& path);

    /// Files in the folder (recursively) that are documents, not state files.
    QStringList Documents() const;
    /// Gives the sample project a state file for every document, a few of them in each state,
    /// unless the folder has state files already.
    void SeedSample(const QString& someoneElse = QStringLiteral("mira"));

    static QString StateFile(const QString& path);

private:
    QString write(const QString& path, const QString& state, const QString& user);

    QString m_folder;
    QString m_user;
};
