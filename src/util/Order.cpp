#include "util/Order.h"

#include <QCollator>
#include <QLocale>

#include <memory>

namespace Util {

namespace {

QLocale collationLocale()
{
    const QLocale locale;
    if (locale.language() == QLocale::C)
        return QLocale(QLocale::English, QLocale::UnitedStates);
    return locale;
}

std::unique_ptr<QCollator> makeCollator(Qt::CaseSensitivity sensitivity)
{
    auto collator = std::make_unique<QCollator>(collationLocale());
    collator->setNumericMode(true);
    collator->setCaseSensitivity(sensitivity);
    collator->setIgnorePunctuation(false);
    return collator;
}

int sign(int value)
{
    return (value > 0) - (value < 0);
}

} // namespace

const QCollator& NaturalCollator(int caseMode)
{
    thread_local std::unique_ptr<QCollator> insensitive;
    thread_local std::unique_ptr<QCollator> sensitive;
    auto& slot = caseMode == 0 ? sensitive : insensitive;
    if (!slot)
        slot = makeCollator(caseMode == 0 ? Qt::CaseSensitive : Qt::CaseInsensitive);
    return *slot;
}

int Order(const QString& a, const QString& b, int orderMode, int caseMode)
{
    if (orderMode == 0)
        return sign(
            QString::compare(a, b, caseMode == 0 ? Qt::CaseSensitive : Qt::CaseInsensitive));
    return sign(NaturalCollator(caseMode).compare(a, b));
}

int Order(const std::wstring& a, const std::wstring& b, int orderMode, int caseMode)
{
    return Order(QString::fromStdWString(a), QString::fromStdWString(b), orderMode, caseMode);
}

} // namespace Util
