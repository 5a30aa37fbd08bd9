#pragma once

#include <QByteArray>
#include <QString>

/// Writes Windows shell link (".lnk") files byte by byte after the published binary layout: the
/// 76-byte header with the shell link class id, a link information block with a volume id and
/// a local base path (optionally also in UTF-16), and a relative path string. Tests build real
/// shortcut files with it instead of carrying files made elsewhere.
class ShortcutFileBuilder
{
public:
    /// The target's path as stored in the link information, in the ANSI code page (Latin-1
    /// here); with @p alsoUnicode the UTF-16 copy is stored too, as newer systems do.
    ShortcutFileBuilder& LocalBasePath(const QString& path, bool alsoUnicode = false);
    /// The part after the base path ("" by default).
    ShortcutFileBuilder& CommonPathSuffix(const QString& suffix);
    /// A relative path string, from the link's folder to the target.
    ShortcutFileBuilder& RelativePath(const QString& path);
    /// Replaces one byte of the class id, making the file no shell link.
    ShortcutFileBuilder& WrongClassId();

    QByteArray Build() const;
    /// Writes Build() to @p filePath; false when the file cannot be written.
    bool Write(const QString& filePath) const;
    /// Writes @p bytes to @p filePath.
    static bool WriteBytes(const QString& filePath, const QByteArray& bytes);

private:
    QByteArray linkInfo() const;

    QString m_localBasePath;
    bool m_hasLocalBasePath = false;
    bool m_unicode = false;
    QString m_suffix;
    QString m_relativePath;
    bool m_wrongClassId = false;
};
