#pragma once

namespace Trove {

/// Which file-references view is in front: the page index of the upper group.
enum class FileReferenceViewType : int { ListView = 0, TreeView = 1 };
/// Which lower pane is in front: the page index of the lower group.
enum class DetailsViewType : int { Details = 0, Preview = 1 };

} // namespace Trove
