#pragma once

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

/// A float's text made in another way than the library makes it: from all digits of its exact
/// decimal expansion, which printf gives, rounded and trimmed as text.
inline std::string FormatByExactDecimal(float value) {
    char expansion[256];
    std::snprintf(expansion, sizeof expansion, "%.160e", std::fabs(static_cast<double>(value)));
    const char* const mark = std::strchr(expansion, 'e');
    int k = std::atoi(mark + 1);
    std::string digits = expansion[0] + std::string(static_cast<const char*>(expansion) + 2, mark);
    const std::string rest = digits.substr(9);
    digits.resize(9);

    const bool tie = rest[0] == '5' && rest.find_first_not_of('0', 1) == std::string::npos;
    if (tie ? (digits[8] - '0') % 2 == 1 : rest[0] >= '5') {
        while (!digits.empty() && digits.back() == '9') digits.pop_back();
        if (digits.empty()) {
            digits = "1";
            ++k;
        } else {
            ++digits.back();
        }
    }

    const std::string sign = value < 0 ? "-" : "";
    std::string text = sign + digits;
    while (static_cast<int>(text.size()) - 1 > k + 1 && text.size() > 1 && text.back() == '0')
        text.pop_back();
    const int n = static_cast<int>(text.size());
    digits = text.substr(sign.size());

    const auto withPoint = [](const std::string& whole, const std::string& fraction) {
        return whole + "." + (fraction.empty() ? "0" : fraction);
    };
    if (k >= 9 || (k < 0 && k - n <= -9))
        return sign + withPoint(digits.substr(0, 1), digits.substr(1)) + "e" + std::to_string(k);
    if (k < 0) return sign + "0." + std::string(static_cast<std::size_t>(-k - 1), '0') + digits;
    const auto whole = static_cast<std::size_t>(k + 1);
    return sign + withPoint(digits.substr(0, whole), digits.substr(whole));
}
