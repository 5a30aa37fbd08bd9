#pragma once

struct CXrefTreeNode;

/// A tree node handle; null is "no node". Items and hosts only hold and compare handles, so the
/// node itself stays internal to the tree.
using HTREEITEM = CXrefTreeNode*;
