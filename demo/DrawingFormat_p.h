#pragma once

// Where things sit in a drawing file, shared by its reader and its writer.

#include <QByteArray>

#include <array>
#include <cstdint>

namespace DrawingLayout {

constexpr int kMaintenanceOffset = 11;
constexpr int kPreviewSeekerOffset = 13;
constexpr int kSignatureOffset = 17;
constexpr int kVersionOffset = 21;
/// Offset, length and CRC-32 of the reference table.
constexpr int kTableOffset = 25;
/// Offset and length of the body.
constexpr int kBodyOffset = 37;

constexpr char kSignature[] = "XRTB";

constexpr std::uint8_t kOverlayFlag = 0x01;
constexpr std::uint8_t kUnloadedFlag = 0x02;

/// Sentinel, block length and entry count.
constexpr int kPreviewBlockHeaderBytes = 16 + 4 + 1;
/// Code, offset and size.
constexpr int kPreviewEntryBytes = 9;
constexpr std::array<unsigned char, 16> kPreviewSentinel = {
    0x1F, 0x25, 0x6D, 0x07, 0xD4, 0x36, 0x28, 0x28, 0x9D, 0x57, 0xCA, 0x3F, 0x9D, 0x44, 0x10, 0x2B};

/// The zlib CRC-32 of @p bytes.
std::uint32_t Crc32(const QByteArray& bytes);

} // namespace DrawingLayout
