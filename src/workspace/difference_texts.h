#pragma once

#include <string>

#include "workspace/choice_controls.h"
#include "workspace/scalar_controls.h"
#include "workspace/table_meaning.h"

/// The words of a difference: values with their units, names, and the change from one to the other.
namespace kx {

/// Name of a table's entry by its axis: "Ignition Load, 2.50 Volt".
[[nodiscard]] std::string Entry_Name(Table table, int row, const Byte_Image& image);

/// Where the entry stands on that axis: "2.50 Volt".
[[nodiscard]] std::string Entry_Place(Table table, int row, const Byte_Image& image);

/// Name of a control with the page that it stands on: "Fuel options, Fuel cut RPM".
[[nodiscard]] std::string Control_Name(std::string_view control, std::string_view label);

/// What a byte of @p image shows as entry @p row of @p table; where that table's bytes mean something else
/// there, what they mean. Without a sensor, and where nothing shows it, the byte itself.
[[nodiscard]] std::string Entry_Value(Table table, int row, const Byte_Image& image);

/// What a slider, a list or a tick shows for @p image.
[[nodiscard]] std::string Control_Value(const Scalar_Row& row, const Byte_Image& image);
[[nodiscard]] std::string Control_Value(const Choice_Row& row, const Byte_Image& image);

/// "+0.5" for two numbers with the same unit, with the decimals that they are shown with; counts where they
/// read the same, and nothing for texts. @p counts is the step of the byte.
[[nodiscard]] std::string Change_Text(const std::string& from, const std::string& to, int counts);

}  // namespace kx
