#pragma once

#include "support/TestXrefItem.h"

#include "framework/ZuUiRmId.h"
#include "resources/TroveResources.h"

/// The item the picture tests draw: a class of its own, so that it can carry the drawing type
/// icon and the standard alternative icons without touching other tests' registrations.
class PictureItem : public TestXrefItem
{
public:
    using TestXrefItem::TestXrefItem;
};

/// Registers PictureItem's icons once per test program.
class PictureTypes : public TestItemTypes
{
public:
    static void Register()
    {
        static const bool done = [] {
            return RegisterClass(typeid(PictureItem), Factory(),
                                 CZuUiRmId(TroveUI::ResourceInstance(), "IDI_TYPE_DWG"),
                                 StandardTypeIcons());
        }();
        (void)done;
    }
};
