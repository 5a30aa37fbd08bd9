#pragma once

#include "kvxreftroveui_export.h"

#include "panel/XrefProperties.h"

#include <map>
#include <string>

/// One row of the details pane: a property, its display name, its value text and how the user
/// may edit it.
class KVXREFTROVEUI_EXPORT CXrefProperty
{
public:
    using XrefProperties = Trove::XrefProperties;

    /// Which in-place editor the details list opens for the row.
    enum XrefPropertyEditStyle : int {
        NotEditable = 0,
        TextEdit = 1,
        FileEdit = 2,
        ComboBox = 3,
    };

    /// A read-only row with an empty value.
    explicit CXrefProperty(XrefProperties property);
    CXrefProperty(XrefProperties property, std::wstring value, XrefPropertyEditStyle editStyle);
    CXrefProperty(const CXrefProperty& other) = default;
    /// Leaves @p other's name and value empty.
    CXrefProperty(CXrefProperty&& other) noexcept;
    CXrefProperty& operator=(const CXrefProperty& other);
    CXrefProperty& operator=(CXrefProperty&& other) noexcept;

    XrefProperties GetProperty() const { return m_property; }
    /// The shared catalogue name of the property. Asking for a property outside 0 to 29 adds an
    /// empty entry for it to the catalogue.
    const std::wstring& GetName() const;
    const std::wstring& GetValue() const { return m_value; }
    void SetValue(const std::wstring& value);
    XrefPropertyEditStyle GetEditStyle() const { return m_editStyle; }
    void SetEditStyle(XrefPropertyEditStyle editStyle) { m_editStyle = editStyle; }
    bool IsEditable() const { return m_editStyle != NotEditable; }

    /// The display names of all properties, loaded by the first construction and never again.
    static std::map<XrefProperties, std::wstring> m_propertyNames;

protected:
    /// True for the values 0 to 29.
    static bool IsValidProperty(XrefProperties property);
    /// Fills m_propertyNames unless it already holds names.
    static void LoadPropertyNames();

private:
    XrefProperties m_property;
    std::wstring m_name;
    std::wstring m_value;
    XrefPropertyEditStyle m_editStyle;
};
