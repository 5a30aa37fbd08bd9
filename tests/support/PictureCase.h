#pragma once

#include <QDir>
#include <QString>

#include <string>

/// One combination of theme and DPI scale that a picture test draws its widgets in.
struct PictureCase
{
    bool dark;
    double scale;

    /// "light_1.0", "dark_2.0", ...: part of the picture's file name.
    QString Suffix() const
    {
        return QStringLiteral("%1_%2")
            .arg(dark ? QStringLiteral("dark") : QStringLiteral("light"))
            .arg(scale, 0, 'f', 1);
    }

    /// Where the picture @p what of this case goes: build/test-output/@p group/, made when
    /// missing, for people to look at.
    QString PicturePath(const char* group, const char* what) const
    {
        const QString folder =
            QStringLiteral(KVX_BINARY_DIR "/test-output/%1").arg(QLatin1String(group));
        QDir().mkpath(folder);
        return QStringLiteral("%1/%2_%3.png").arg(folder, QLatin1String(what), Suffix());
    }
};

/// The four cases every picture test covers: both themes at scales 1.0 and 2.0.
inline const PictureCase kPictureCases[] = {{false, 1.0}, {true, 1.0}, {false, 2.0}, {true, 2.0}};
