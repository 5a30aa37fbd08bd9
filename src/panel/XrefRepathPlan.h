#pragma once

#include "kvxreftroveui_export.h"

#include <QString>

#include <Qt>

#include <cstddef>
#include <memory>
#include <vector>

class CXrefPanelCtrlItem;
class CXrefRepathPlanPrivate;

/// The new saved paths for many references at once, worked out before anything changes so that
/// the user sees them first. Two ways to get them: replace a piece of text in every saved path,
/// or move every reference to one folder, each keeping its file name. Only references whose path
/// actually changes are in the plan.
///
/// Whether each new file exists is not looked up here (it can take long on a slow share): a
/// caller checks ResolvedPath of each entry where it likes, and records the answer with
/// SetExists. The plan itself changes nothing; the host applies it.
class KVXREFTROVEUI_EXPORT CXrefRepathPlan
{
public:
    enum class Exists { Unknown, Yes, No };

    struct Entry
    {
        /// The reference; not owned. Items sharing one list row are separate entries.
        CXrefPanelCtrlItem* item = nullptr;
        QString name;
        QString oldPath;
        QString newPath;
        Exists exists = Exists::Unknown;
    };

    /// A reference as the plan starts from it: its name and its current saved path.
    struct Source
    {
        CXrefPanelCtrlItem* item = nullptr;
        QString name;
        QString savedPath;
    };

    /// Takes the name and saved path of each of @p items (an item listed twice counts once).
    /// The plan starts empty.
    explicit CXrefRepathPlan(const std::vector<CXrefPanelCtrlItem*>& items);
    explicit CXrefRepathPlan(std::vector<Source> sources);
    ~CXrefRepathPlan();
    CXrefRepathPlan(const CXrefRepathPlan&) = delete;
    CXrefRepathPlan& operator=(const CXrefRepathPlan&) = delete;

    const std::vector<Source>& Sources() const;

    /// The folder that relative paths are taken from when the new files are looked for (the
    /// host drawing's folder). Empty: the working folder.
    void SetBaseFolder(const QString& folder);
    QString BaseFolder() const;

    /// Every occurrence of @p find in a saved path becomes @p replace, as plain text. An empty
    /// @p find changes nothing.
    void FindAndReplace(const QString& find, const QString& replace,
                        Qt::CaseSensitivity sensitivity);
    /// Each saved path becomes @p folder followed by its file name; references without a file
    /// name are left out. An empty @p folder changes nothing. The folder's own separator style
    /// (/ or \) joins the two.
    void SelectNewFolder(const QString& folder);

    /// The references whose saved path changes, in the order they were given.
    const std::vector<Entry>& Entries() const;
    /// How many entries have their existence still unknown.
    int UnknownCount() const;
    /// How many entries' new file was not found.
    int MissingCount() const;

    /// Where the new file of @p path is looked for: \ taken as a folder separator, a relative
    /// path taken from the base folder.
    QString ResolvedPath(const QString& path) const;
    /// Records whether the new file of entry @p index exists; nothing for an index out of range.
    void SetExists(std::size_t index, bool exists);

    /// The file name part of @p path, after its last / or \.
    static QString FileNameOf(const QString& path);

private:
    std::unique_ptr<CXrefRepathPlanPrivate> const d;
};
