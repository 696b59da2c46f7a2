#pragma once

#include <cstdint>
#include <string>

namespace importing {

/// A whole number as people read it, "4,353".
std::string Grouped(std::uint64_t number);

/// An amount to the cent, "-1,234.50".
std::string Amount(double amount);

/// A quantity to six places, without zeros at its end: "1,234.5".
std::string Quantity(double quantity);

} // namespace importing
