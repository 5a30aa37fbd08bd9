#include "panel/XmlHelpers.h"

#include <QDomDocument>
#include <QDomElement>
#include <QLocale>

#include <climits>

namespace {

// The element behind @p node, null when @p node is none or not an element.
QDomElement elementOf(const QDomNode& node)
{
    return node.isElement() ? node.toElement() : QDomElement();
}

QString text(const wchar_t* name)
{
    return QString::fromWCharArray(name);
}

bool isBlank(QChar c)
{
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

// Leading blanks, a sign, then digits for as long as they last; held at the limits of long.
long leadingNumber(const QString& text)
{
    int i = 0;
    const int size = int(text.size());
    while (i < size && isBlank(text[i]))
        ++i;
    bool negative = false;
    if (i < size && (text[i] == u'+' || text[i] == u'-'))
        negative = text[i++] == u'-';
    // Accumulated as a negative number: its range reaches one further than the positive one.
    long value = 0;
    for (; i < size && text[i] >= u'0' && text[i] <= u'9'; ++i) {
        const int digit = text[i].unicode() - u'0';
        if (value < (LONG_MIN + digit) / 10)
            return negative ? LONG_MIN : LONG_MAX;
        value = value * 10 - digit;
    }
    if (negative)
        return value;
    return value == LONG_MIN ? LONG_MAX : -value;
}

bool readAttribute(const QDomNode& node, const wchar_t* name, QString& value)
{
    const QDomElement element = elementOf(node);
    if (element.isNull() || !name || !element.hasAttribute(text(name)))
        return false;
    value = element.attribute(text(name));
    return true;
}

int writeAttribute(const QDomNode& node, const wchar_t* name, const QString& value)
{
    QDomElement element = elementOf(node);
    if (element.isNull() || !name)
        return 0;
    element.setAttribute(text(name), value);
    return 1;
}

} // namespace

int GetChildNode(const QDomNode& node, const wchar_t* name, QDomNode* child)
{
    if (node.isNull() || !name)
        return 0;
    const QStringList path = text(name).split(u'/');
    QDomNode found = node;
    for (const QString& step : path) {
        if (step.isEmpty())
            return 0;
        found = found.firstChildElement(step);
        if (found.isNull())
            return 0;
    }
    if (child)
        *child = found;
    return 1;
}

int GetAttributeValue(const QDomNode& node, const wchar_t* name, long& value)
{
    value = 0;
    QString raw;
    if (!readAttribute(node, name, raw))
        return 0;
    value = leadingNumber(raw);
    return 1;
}

int SetAttributeValue(QDomNode node, const wchar_t* name, long value)
{
    return writeAttribute(node, name, QString::number(value));
}

int GetAttributeValue(const QDomNode& node, const wchar_t* name, QString& value, int maxLength)
{
    value.clear();
    QString raw;
    if (!readAttribute(node, name, raw))
        return 0;
    value = maxLength < 0 ? raw : raw.left(maxLength);
    return 1;
}

int SetAttributeValue(QDomNode node, const wchar_t* name, const QString& value, int maxLength)
{
    return writeAttribute(node, name, maxLength < 0 ? value : value.left(maxLength));
}

int GetAttributeValue(const QDomNode& node, const wchar_t* name, double& value)
{
    value = 0.0;
    QString raw;
    if (!readAttribute(node, name, raw))
        return 0;
    bool ok = false;
    const double read = QLocale::c().toDouble(raw.trimmed(), &ok);
    if (!ok)
        return 0;
    value = read;
    return 1;
}

int SetAttributeValue(QDomNode node, const wchar_t* name, double value)
{
    return writeAttribute(node, name,
                          QLocale::c().toString(value, 'g', QLocale::FloatingPointShortest));
}

int GetAttributeValue(const QDomNode& node, const wchar_t* name, QUuid& value)
{
    value = QUuid();
    QString raw;
    if (!readAttribute(node, name, raw))
        return 0;
    raw = raw.trimmed();
    const QUuid read = QUuid::fromString(raw);
    // The all-zero identifier reads as null too; only its own spelling makes it valid.
    static const QString nil = QUuid().toString(QUuid::WithoutBraces);
    if (read.isNull() && raw != nil && raw != u'{' + nil + u'}')
        return 0;
    value = read;
    return 1;
}

int SetAttributeValue(QDomNode node, const wchar_t* name, const QUuid& value)
{
    return writeAttribute(node, name, value.toString(QUuid::WithBraces).toUpper());
}

int RemoveChildren(QDomNode node)
{
    if (node.isNull())
        return 0;
    while (!node.firstChild().isNull())
        node.removeChild(node.firstChild());
    return 1;
}

int AddChildNode(QDomNode node, const wchar_t* name, short type, QDomNode* child)
{
    // Only elements, documents and fragments hold children.
    if (!name || !(node.isElement() || node.isDocument() || node.isDocumentFragment()))
        return 0;
    QDomDocument document = node.isDocument() ? node.toDocument() : node.ownerDocument();
    if (document.isNull())
        return 0;
    const QString value = text(name);
    QDomNode made;
    switch (type) {
    case QDomNode::ElementNode:
        if (value.isEmpty())
            return 0;
        made = document.createElement(value);
        break;
    case QDomNode::TextNode:
        made = document.createTextNode(value);
        break;
    case QDomNode::CDATASectionNode:
        made = document.createCDATASection(value);
        break;
    case QDomNode::ProcessingInstructionNode:
        if (value.isEmpty())
            return 0;
        made = document.createProcessingInstruction(value, QString());
        break;
    case QDomNode::CommentNode:
        made = document.createComment(value);
        break;
    default:
        return 0;
    }
    if (node.appendChild(made).isNull())
        return 0;
    if (child)
        *child = made;
    return 1;
}
