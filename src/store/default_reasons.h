#pragma once
// The reasons for absence a new reasons file starts with; the record number is the reason
// number.

#include <array>

namespace korvel::store {

inline constexpr std::array<const char*, 11> kDefaultReasons = {
    "ANNUAL LEAVE",
    "SICK",
    "INCAPACITY",
    "OCCUPATIONAL INJURY",
    "MATERNITY",
    "ADAPTION",
    "FAMILY RESPONSIBILITY",
    "SPECIAL",
    "OFFICE BEARERS",
    "STUDY",
    "UNPAID",
};

}  // namespace korvel::store
