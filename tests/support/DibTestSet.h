#pragma once

#include "support/DibBuilder.h"
#include "support/QtPrinters.h"

#include <QImage>
#include <QString>

#include <vector>

/// One picture of every bit depth, compression and header layout the readers meet, each laid
/// out the way other programs write them, so that a reader can be held against Qt's own.
struct DibCase
{
    const char* name;
    DibBuilder builder;
};

std::vector<DibCase> DibTestSet();

/// Where @p actual first differs from @p expected (size, or a pixel's colour and alpha), or an
/// empty text when they show the same picture, whatever their formats.
QString FirstDifference(const QImage& actual, const QImage& expected);
