#pragma once

namespace veldran::shell::demo {

// An account of the demo company without correlations, the next one, which has none either, and causali that
// allow the cost accounts keyed in the tour.
inline constexpr const char* account = "68/05/10/0003";
inline constexpr const char* accountCode = "6805100003";
inline constexpr const char* nextAccount = "68/05/10/0004";
inline constexpr const char* nextAccountCode = "6805100004";
inline constexpr const char* purchase = "FTAC";
inline constexpr const char* purchaseName = "Fattura di acquisto";
inline constexpr const char* foreignPurchase = "FTAI";
inline constexpr const char* foreignPurchaseName = "Fattura di acquisto intracomunitaria";

} // namespace veldran::shell::demo
