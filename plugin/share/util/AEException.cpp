#include "share/util/AEException.h"

#include <cstdarg>
#include <cstdio>

namespace AEUtil {

AEException::AEException(PF_Err errorCode, const char* file, int line, const char* format, ...)
    : code(errorCode) {
    char text[2048];
    std::snprintf(text, sizeof text, "%s(%d): ", file, line);
    message = text;

    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    message += text;
}

AEException::~AEException() = default;

}  // namespace AEUtil
