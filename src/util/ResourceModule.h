#pragma once

#include "kvxrefutil_export.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <memory>
#include <string>

namespace Util {

/// A resource module: the texts, menus, icons and bitmaps of one language, kept in a folder of
/// the Qt resource system. The folder holds "strings.json" (numeric id -> text), "menus/<id>.json",
/// "icons/<name>.svg", "bitmaps/<name>.svg" and "cursors/<name>.svg".
///
/// A module may name a fallback module; anything it lacks is then looked up there, so a language
/// module only needs to carry its translated strings.
class KVXREFUTIL_EXPORT ResourceModule
{
public:
    /// @p root is a resource folder such as ":/kvxreftroveui/default".
    explicit ResourceModule(QString root, QString name = {},
                            const ResourceModule* fallback = nullptr);
    ~ResourceModule();
    ResourceModule(const ResourceModule&) = delete;
    ResourceModule& operator=(const ResourceModule&) = delete;

    /// Files larger than this are not taken for resource files.
    static constexpr qint64 kMaxRccBytes = 64LL * 1024 * 1024;

    /// Registers an .rcc file and makes a module of it. Returns null (and sets @p error) when the
    /// file cannot be read, is not a sound resource file or holds no "strings.json". The file is
    /// read once and checked; later changes to it do not reach the module. The registration
    /// ends with the module.
    static std::unique_ptr<ResourceModule> LoadRcc(const QString& rccPath,
                                                   const ResourceModule* fallback = nullptr,
                                                   QString* error = nullptr);

    const QString& Root() const { return m_root; }
    const QString& Name() const { return m_name; }
    const ResourceModule* Fallback() const { return m_fallback; }

    /// The text of @p id, or an empty text when neither this module nor its fallback has it.
    QString String(unsigned id) const;
    bool HasString(unsigned id) const;

    /// The resource path of @p relative (for example "icons/IDI_STATUS_BLANK.svg") in this module,
    /// or in its fallback when this module lacks it; empty when neither has it.
    QString FindFile(const QString& relative) const;
    /// The bytes of @p relative as FindFile locates it; empty when missing.
    QByteArray Data(const QString& relative) const;

    /// Every string id of this module itself (fallback not included), ascending.
    QList<unsigned> StringIds() const;

private:
    void loadStrings() const;

    QString m_root;
    QString m_name;
    const ResourceModule* m_fallback;
    QByteArray m_rccData; // registered with the resource system while the module lives
    QString m_mapRoot;
    mutable bool m_loaded = false;
    mutable QHash<unsigned, QString> m_strings;
};

/// The module that loads without an explicit module use. Null until someone sets one.
KVXREFUTIL_EXPORT const ResourceModule* CurrentResourceModule();
KVXREFUTIL_EXPORT void SetCurrentResourceModule(const ResourceModule* module);

/// The text of @p id in @p module (the current module when null); empty when missing.
KVXREFUTIL_EXPORT std::wstring LoadStrW(const ResourceModule* module, unsigned id);

} // namespace Util
