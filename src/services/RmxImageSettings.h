#pragma once

#include "kvxreftroveui_export.h"

namespace TroveUI {

/// Process-wide settings the views consult: whether the user is logged in to the document
/// repository. The host creates the one instance before any view selects or draws and deletes it
/// after the last view is gone.
class KVXREFTROVEUI_EXPORT RmxImageSettings
{
public:
    /// Creates the instance when there is none; a second call keeps the existing one.
    static void New();
    /// Destroys the instance, if any.
    static void Delete();
    /// The instance; calling it without one is a programming error (see IsValueCreated).
    static RmxImageSettings& Value();
    static bool IsValueCreated();

    RmxImageSettings& operator=(const RmxImageSettings& other) = default;
    RmxImageSettings& operator=(RmxImageSettings&& other) = default;

    bool GetTroveLoggedIn() const { return m_troveLoggedIn; }
    void SetTroveLoggedIn(bool loggedIn) { m_troveLoggedIn = loggedIn; }

    static RmxImageSettings* m_pInstance;

private:
    RmxImageSettings() = default;
    bool m_troveLoggedIn = false;
};

} // namespace TroveUI
