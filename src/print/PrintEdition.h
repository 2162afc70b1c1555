// Which edition of the application form a page is printed for: the
// 2008-04-01 edition, or an earlier one with its own layouts and fields.
#pragma once

namespace kelvary {

enum class PrintEdition { Form200804, Earlier };

}  // namespace kelvary
