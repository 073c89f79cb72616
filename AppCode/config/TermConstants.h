#pragma once

// Numbers of the terms that this program shows.
namespace qln {

constexpr int kTermBusiness = 50;  // the business name of a customer
constexpr int kTermFirstName = 93;
constexpr int kTermLastName = 94;

} // namespace qln
