// AEException: a host call failed in a way that ends the command. Caught at the entry point
// alone, which answers with `code`.
#pragma once

#include <exception>
#include <string>

#include "hostapi/hostapi.h"

namespace AEUtil {

class AEException : public std::exception {
  public:
    // `message` becomes "FILE(LINE): " followed by the printed format; either part is cut at
    // 2047 characters.
    AEException(PF_Err errorCode, const char* file, int line, const char* format, ...)
        __attribute__((format(printf, 5, 6)));
    AEException(const AEException&) = default;
    AEException& operator=(const AEException&) = default;
    ~AEException() override;

    const char* what() const noexcept override { return message.c_str(); }

    PF_Err code;
    std::string message;
};

}  // namespace AEUtil
