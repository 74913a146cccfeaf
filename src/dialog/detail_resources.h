#pragma once

#include "platform/ui/resource_table.h"

#include <span>

namespace tessara {

inline constexpr UINT kDetailTemplate = 131;

/// Controls of the dialog.
enum DetailControl : int {
    kApplyButton = 201,
    kElementList = 202,
    kBrightnessList = 205,
    kImportButton = 206,
    kDeleteButton = 207,
    kDatabaseList = 208,
    kNameField = 209,
    kNameLabel = 210,
    kTilingXField = 212,
    kTilingYField = 215,
    kShowBox = 216,
    kTilingXSpin = 218,
    kTilingYSpin = 219,
    kPreview = 1004,
};

/// Pictures: the one at the left side, and a strip of button icons of 16 by 16 pixels.
inline constexpr UINT kSidePicture = 203;
inline constexpr UINT kIconStrip = 1050;

/// Texts.
enum DetailText : UINT {
    kProductName = 100,
    kReplaceQuestion = 207,
    kDeleteQuestion = 211,
    kNameMissing = 214,
    kNoPreview = 220,
    kNoImageReader = 221,
    kNoUserDatabase = 222,
    kDatabaseTip = 2006,
    kDatabaseHelp = 2007,
    kDeleteTip = 2009,
    kNameTip = 2010,
    kImportTip = 2011,
    kImportHelp = 2012,
    kApplyTip = 2013,
    kShowTip = 2014,
    kTilingXTip = 2015,
    kTilingYTip = 2016,
    kBrightnessTip = 2017,
};

std::span<const DialogTemplate> DetailTemplates() noexcept;
std::span<const BitmapResource> DetailBitmaps() noexcept;
std::span<const StringResource> DetailStrings() noexcept;

}  // namespace tessara
