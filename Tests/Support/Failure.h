#pragma once

#include <VokLib/Base/VokException.h>

#include <exception>
#include <ostream>
#include <string>
#include <utility>

/// A failure as a caller sees it: its text, the path of the object at fault and its kind. Without a
/// text there was none.
struct Failure {
    enum class Kind { VokException, Exception, Standard };

    std::string text;
    std::string object;
    Kind kind = Kind::VokException;

    bool operator==(const Failure&) const = default;
};

/// A failure of scene data.
inline Failure OfObject(std::string text, std::string path = "") {
    return {std::move(text), std::move(path), Failure::Kind::VokException};
}
/// A QelTools::Common::Exception that is none of scene data.
inline Failure Plain(std::string text) {
    return {std::move(text), "", Failure::Kind::Exception};
}

inline std::ostream& operator<<(std::ostream& out, const Failure& failure) {
    static constexpr const char* kKinds[] = {"VokException", "Exception", "std::exception"};
    return out << '"' << failure.text << "\" {" << failure.object << "} "
               << kKinds[static_cast<int>(failure.kind)];
}

/// The failure that leaves `work`.
template <class Work>
Failure FailureOf(Work&& work) {
    try {
        work();
    } catch (const VokException& failure) {
        return OfObject(failure.what(), failure.GetCauseObject());
    } catch (const QelTools::Common::Exception& failure) {
        return Plain(failure.what());
    } catch (const std::exception& failure) {
        return {failure.what(), "", Failure::Kind::Standard};
    }
    return {};
}

/// The same on one line, "text {path}", the path where the failure has one.
template <class Work>
std::string FailureText(Work&& work) {
    const Failure failure = FailureOf(work);
    return failure.object.empty() ? failure.text : failure.text + " {" + failure.object + "}";
}
