// The attribute and child-node functions over the host's XML profile.

#include "panel/XmlHelpers.h"

#include <gtest/gtest.h>

#include <QDomDocument>

#include <climits>

namespace {

QDomDocument parse(const QString& xml)
{
    QDomDocument document;
    EXPECT_TRUE(document.setContent(xml)) << xml.toStdString();
    return document;
}

struct NumberCase
{
    const char* text;
    long value;
};

TEST(XmlHelpers, numbersReadAsFarAsTheyGo)
{
    const NumberCase cases[] = {
        {"2abc", 2},
        {"abc", 0},
        {"", 0},
        {"  -42", -42},
        {"\t+7 ", 7},
        {"- 3", 0},
        {"12.9", 12},
        {"0x1F", 0},
        {"007", 7},
        {"-0", 0},
        {"++1", 0},
        {"99999999999999999999", LONG_MAX},
        {"-99999999999999999999", LONG_MIN},
    };
    QDomDocument document = parse(QStringLiteral("<a/>"));
    QDomElement element = document.documentElement();
    for (const NumberCase& c : cases) {
        element.setAttribute(QStringLiteral("n"), QString::fromLatin1(c.text));
        long value = -1;
        EXPECT_EQ(GetAttributeValue(element, L"n", value), 1) << c.text;
        EXPECT_EQ(value, c.value) << c.text;
    }
}

TEST(XmlHelpers, readsFailOnAnythingButAnElementWithTheAttribute)
{
    QDomDocument document = parse(QStringLiteral("<a n=\"5\">text</a>"));
    long value = -1;
    EXPECT_EQ(GetAttributeValue(document.documentElement(), L"missing", value), 0);
    EXPECT_EQ(value, 0) << "zero first, whatever happens";
    value = -1;
    EXPECT_EQ(GetAttributeValue(document.documentElement().firstChild(), L"n", value), 0);
    EXPECT_EQ(GetAttributeValue(document, L"n", value), 0);
    EXPECT_EQ(GetAttributeValue(QDomNode(), L"n", value), 0);
    EXPECT_EQ(GetAttributeValue(document.documentElement(), nullptr, value), 0);
    EXPECT_EQ(value, 0);
}

TEST(XmlHelpers, writesDecimalOnElementsOnly)
{
    QDomDocument document = parse(QStringLiteral("<a>text</a>"));
    QDomElement element = document.documentElement();
    EXPECT_EQ(SetAttributeValue(element, L"n", -17), 1);
    EXPECT_EQ(element.attribute(QStringLiteral("n")), "-17");
    EXPECT_EQ(SetAttributeValue(element, L"n", LONG_MIN), 1);
    long back = 0;
    GetAttributeValue(element, L"n", back);
    EXPECT_EQ(back, LONG_MIN);
    EXPECT_EQ(SetAttributeValue(element.firstChild(), L"n", 1), 0);
    EXPECT_EQ(SetAttributeValue(document, L"n", 1), 0);
    EXPECT_EQ(SetAttributeValue(QDomNode(), L"n", 1), 0);
}

TEST(XmlHelpers, textNumbersAndIdentifiersRoundTrip)
{
    QDomDocument document = parse(QStringLiteral("<a/>"));
    QDomElement element = document.documentElement();

    QString text;
    EXPECT_EQ(SetAttributeValue(element, L"s", QStringLiteral("abcdef"), 4), 1);
    EXPECT_EQ(GetAttributeValue(element, L"s", text, -1), 1);
    EXPECT_EQ(text, "abcd");
    EXPECT_EQ(GetAttributeValue(element, L"s", text, 2), 1);
    EXPECT_EQ(text, "ab");

    double number = 0;
    for (double value : {0.1, -2.5e-300, 1.0 / 3.0}) {
        ASSERT_EQ(SetAttributeValue(element, L"d", value), 1);
        EXPECT_EQ(GetAttributeValue(element, L"d", number), 1);
        EXPECT_EQ(number, value);
    }
    element.setAttribute(QStringLiteral("d"), QStringLiteral("1.5x"));
    EXPECT_EQ(GetAttributeValue(element, L"d", number), 0);
    EXPECT_EQ(number, 0.0);

    const QUuid id = QUuid::fromString(QStringLiteral("{0a1b2c3d-0000-4000-8000-00000000abcd}"));
    QUuid read;
    ASSERT_EQ(SetAttributeValue(element, L"g", id), 1);
    EXPECT_EQ(element.attribute(QStringLiteral("g")), "{0A1B2C3D-0000-4000-8000-00000000ABCD}");
    EXPECT_EQ(GetAttributeValue(element, L"g", read), 1);
    EXPECT_EQ(read, id);
    element.setAttribute(QStringLiteral("g"),
                         QStringLiteral("00000000-0000-0000-0000-000000000000"));
    EXPECT_EQ(GetAttributeValue(element, L"g", read), 1);
    EXPECT_TRUE(read.isNull());
    element.setAttribute(QStringLiteral("g"), QStringLiteral("{not an id}"));
    EXPECT_EQ(GetAttributeValue(element, L"g", read), 0);
}

TEST(XmlHelpers, childrenAreFoundAddedAndRemoved)
{
    QDomDocument document =
        parse(QStringLiteral("<Profile><Panel><TooltipSettings/></Panel><!--c--></Profile>"));
    QDomNode child;
    EXPECT_EQ(GetChildNode(document, L"Profile", &child), 1) << "the document element";
    EXPECT_EQ(GetChildNode(child, L"Panel/TooltipSettings", &child), 1);
    EXPECT_EQ(child.nodeName(), "TooltipSettings");
    EXPECT_EQ(GetChildNode(document.documentElement(), L"TooltipSettings", nullptr), 0)
        << "only children, not deeper elements";
    EXPECT_EQ(GetChildNode(document.documentElement(), L"Panel//", nullptr), 0);
    EXPECT_EQ(GetChildNode(QDomNode(), L"Panel", nullptr), 0);

    QDomNode added;
    ASSERT_EQ(AddChildNode(child, L"Entry", QDomNode::ElementNode, &added), 1);
    EXPECT_EQ(added.parentNode(), child);
    EXPECT_EQ(AddChildNode(child, L"note", QDomNode::CommentNode, nullptr), 1);
    EXPECT_EQ(AddChildNode(child, L"text", QDomNode::TextNode, nullptr), 1);
    EXPECT_EQ(child.childNodes().size(), 3);
    EXPECT_EQ(AddChildNode(child, L"x", QDomNode::AttributeNode, nullptr), 0);
    EXPECT_EQ(AddChildNode(child, L"", QDomNode::ElementNode, nullptr), 0);
    EXPECT_EQ(AddChildNode(child.lastChild(), L"x", QDomNode::ElementNode, nullptr), 0)
        << "a text holds no children";

    EXPECT_EQ(RemoveChildren(child), 1);
    EXPECT_FALSE(child.hasChildNodes());
    EXPECT_EQ(RemoveChildren(QDomNode()), 0);
}

} // namespace
