#pragma once

// A scratch project folder for the demo host's tests: drawings and other files written by
// relative path, read back the same way.

#include "DrawingFormat.h"
#include "ReferenceState.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <ostream>
#include <vector>

inline void PrintTo(ReferenceState state, std::ostream* os)
{
    *os << "ReferenceState(" << int(state) << ")";
}

class DemoProject : public ::testing::Test
{
protected:
    QString Path(const QString& relative) const { return m_dir.filePath(relative); }

    /// A drawing at @p relative holding @p references; the path written.
    QString Drawing(const QString& relative, std::vector<ReferenceRecord> references = {},
                    QByteArray magic = "KV1032")
    {
        DrawingContents contents;
        contents.versionMagic = std::move(magic);
        contents.references = std::move(references);
        const QByteArray bytes = EncodeDrawing(contents);
        EXPECT_FALSE(bytes.isEmpty());
        return WriteBytes(relative, bytes);
    }

    /// Saves @p contents the way the program does (a temporary file renamed over the old one).
    QString Write(const QString& relative, const DrawingContents& contents)
    {
        const QString path = Path(relative);
        QDir().mkpath(QFileInfo(path).absolutePath());
        const QString fault = SaveDrawing(path, contents);
        EXPECT_TRUE(fault.isEmpty()) << fault.toStdString();
        return path;
    }

    QString WriteBytes(const QString& relative, const QByteArray& bytes)
    {
        const QString path = Path(relative);
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
        return path;
    }

    static QByteArray Bytes(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static ReferenceRecord Ref(const char* name, const QString& savedPath,
                               ReferenceKind kind = ReferenceKind::Drawing)
    {
        return {kind, QString::fromUtf8(name), savedPath, false, false};
    }

    QTemporaryDir m_dir;
};
