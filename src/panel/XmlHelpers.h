#pragma once

#include "kvxreftroveui_export.h"

#include <QDomNode>
#include <QString>
#include <QUuid>

#include <utility>

// Small attribute and child-node functions over the host's XML profile. Each answers 1 when it
// did what it says and 0 otherwise (a null node, a node that is not an element where one is
// needed, a missing attribute or child); none of them throws. Names are UTF-16 as the host keeps
// them; a null name gives 0.

/// The first element that @p name selects below @p node: a child element's name, or several
/// names joined by '/' for an element deeper down. A document node selects its document element
/// by name. On success @p child (when given) is set to it.
KVXREFTROVEUI_EXPORT int GetChildNode(const QDomNode& node, const wchar_t* name, QDomNode* child);

/// Reads attribute @p name of element @p node as a whole number. @p value is 0 unless the
/// attribute exists; its text is read as far as it forms a number: leading blanks, an optional
/// sign and the digits up to the first other character ("2abc" is 2, "abc" is 0). Numbers past
/// the range of long are held at its limit.
KVXREFTROVEUI_EXPORT int GetAttributeValue(const QDomNode& node, const wchar_t* name, long& value);
/// Writes @p value in decimal as attribute @p name of element @p node.
KVXREFTROVEUI_EXPORT int SetAttributeValue(QDomNode node, const wchar_t* name, long value);
/// An int reads as long: without it a literal such as 3 would match the long and the double
/// version equally well.
inline int SetAttributeValue(QDomNode node, const wchar_t* name, int value)
{
    return SetAttributeValue(std::move(node), name, long(value));
}

/// Reads attribute @p name as text, at most @p maxLength characters of it (all of it when
/// @p maxLength is negative). @p value is empty unless the attribute exists.
KVXREFTROVEUI_EXPORT int GetAttributeValue(const QDomNode& node, const wchar_t* name,
                                           QString& value, int maxLength);
/// Writes at most @p maxLength characters of @p value (all of it when negative).
KVXREFTROVEUI_EXPORT int SetAttributeValue(QDomNode node, const wchar_t* name, const QString& value,
                                           int maxLength);

/// Reads a decimal number with an optional fraction and exponent, blanks around it allowed;
/// 0 (and @p value 0) when the text is anything else.
KVXREFTROVEUI_EXPORT int GetAttributeValue(const QDomNode& node, const wchar_t* name,
                                           double& value);
/// Writes the shortest decimal text that reads back as the same @p value.
KVXREFTROVEUI_EXPORT int SetAttributeValue(QDomNode node, const wchar_t* name, double value);

/// Reads an identifier written as 32 hexadecimal digits in groups of 8-4-4-4-12, with or without
/// braces; 0 (and the null identifier) for any other text.
KVXREFTROVEUI_EXPORT int GetAttributeValue(const QDomNode& node, const wchar_t* name, QUuid& value);
/// Writes @p value in braces with upper-case digits: {0A1B2C3D-...}.
KVXREFTROVEUI_EXPORT int SetAttributeValue(QDomNode node, const wchar_t* name, const QUuid& value);

/// Removes every child of @p node.
KVXREFTROVEUI_EXPORT int RemoveChildren(QDomNode node);

/// Appends a new child of DOM node type @p type to @p node: 1 an element named @p name, 3 a text,
/// 4 a character data section or 8 a comment holding @p name, 7 a processing instruction with
/// @p name as its target. Other types, and a @p node that cannot hold children, give 0. On
/// success @p child (when given) is set to the new node.
KVXREFTROVEUI_EXPORT int AddChildNode(QDomNode node, const wchar_t* name, short type,
                                      QDomNode* child);
