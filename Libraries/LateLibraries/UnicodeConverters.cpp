// The converters of the Unicode library, which the parser asks for encodings that neither it nor
// the C library knows. The library is loaded with the first of them. The names and the version are
// those of its headers: each name below is a macro for one with the version behind it.

#include "LateFunction.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

#include <exception>

#define RIGBAKE_TEXT_OF(name) #name
#define RIGBAKE_NAME_OF(name) RIGBAKE_TEXT_OF(name)
#define RIGBAKE_FIND(function) FindLateFunction<&function>(kLibrary, RIGBAKE_NAME_OF(function))

namespace {

constexpr const char* kLibrary = "libicuuc.so." U_ICU_VERSION_SHORT;

void FindAll() {
    RIGBAKE_FIND(ucnv_close);
    RIGBAKE_FIND(ucnv_convertEx);
    RIGBAKE_FIND(ucnv_setFromUCallBack);
    RIGBAKE_FIND(ucnv_setToUCallBack);
    RIGBAKE_FIND(UCNV_FROM_U_CALLBACK_STOP);
    RIGBAKE_FIND(UCNV_TO_U_CALLBACK_STOP);
    RIGBAKE_FIND(ucnv_open);
}

}  // namespace

// Where the library is missing there is no such converter; nothing is thrown through the parser.
// The others are called with what this one gave, and fail for no reason of ours.
UConverter* ucnv_open(const char* encoding, UErrorCode* code) try {
    if (lateFunction<&ucnv_open> == nullptr) FindAll();
    return lateFunction<&ucnv_open>(encoding, code);
} catch (const std::exception&) {
    *code = U_FILE_ACCESS_ERROR;
    return nullptr;
}

void ucnv_close(UConverter* converter) {
    lateFunction<&ucnv_close>(converter);
}

void ucnv_convertEx(UConverter* target, UConverter* source, char** to, const char* toEnd,
                    const char** from, const char* fromEnd, UChar* pivot, UChar** pivotSource,
                    UChar** pivotTarget, const UChar* pivotEnd, UBool reset, UBool flush,
                    UErrorCode* code) {
    lateFunction<&ucnv_convertEx>(target, source, to, toEnd, from, fromEnd, pivot, pivotSource,
                                  pivotTarget, pivotEnd, reset, flush, code);
}

void ucnv_setFromUCallBack(UConverter* converter, UConverterFromUCallback callback,
                           const void* context, UConverterFromUCallback* oldCallback,
                           const void** oldContext, UErrorCode* code) {
    lateFunction<&ucnv_setFromUCallBack>(converter, callback, context, oldCallback, oldContext,
                                         code);
}

void ucnv_setToUCallBack(UConverter* converter, UConverterToUCallback callback, const void* context,
                         UConverterToUCallback* oldCallback, const void** oldContext,
                         UErrorCode* code) {
    lateFunction<&ucnv_setToUCallBack>(converter, callback, context, oldCallback, oldContext, code);
}

void UCNV_FROM_U_CALLBACK_STOP(const void* context, UConverterFromUnicodeArgs* arguments,
                               const UChar* units, int32_t length, UChar32 point,
                               UConverterCallbackReason reason, UErrorCode* code) {
    lateFunction<&UCNV_FROM_U_CALLBACK_STOP>(context, arguments, units, length, point, reason,
                                             code);
}

void UCNV_TO_U_CALLBACK_STOP(const void* context, UConverterToUnicodeArgs* arguments,
                             const char* units, int32_t length, UConverterCallbackReason reason,
                             UErrorCode* code) {
    lateFunction<&UCNV_TO_U_CALLBACK_STOP>(context, arguments, units, length, reason, code);
}
