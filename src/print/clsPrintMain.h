// The print driver for application forms of the editions before 2008-04-01.
#pragma once

#include <cstdint>

namespace kelvary {

class clsPrintMain {
public:
    void setAPDataCode(std::int32_t code) { mlngAPDataCode = code; }
    void setMainDataCode(std::int32_t code) { mlngMainDataCode = code; }
    void PrintDocument();

private:
    std::int32_t mlngAPDataCode = 0;
    std::int32_t mlngMainDataCode = 0;
};

}  // namespace kelvary
