// UpdateDocument FILE VERSION takes a document of an old version through the format update and
// drops what it writes; VERSION is as in "1_14_1".

#include <VokLib/Document/VokUpdate.h>
#include <VokLib/Library/VokLib.h>
#include <VokLib/Tree/VokWorld.h>

#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <ostream>
#include <streambuf>
#include <string>
#include <vector>

namespace {

class Input : public VokUpdate::InputBuffer {
  public:
    explicit Input(const char* path) {
        std::ifstream file(path, std::ios::binary | std::ios::ate);
        bytes.resize(static_cast<std::size_t>(file.tellg()));
        file.seekg(0);
        file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    const char* GetData() const override { return bytes.data(); }
    std::size_t GetSize() const override { return bytes.size(); }
    void Free() override { std::vector<char>().swap(bytes); }

  private:
    std::vector<char> bytes;
};

class Nothing : public std::streambuf {
  protected:
    int_type overflow(int_type character) override { return traits_type::not_eof(character); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) return 1;
    try {
        const VokLib library(true, true, true, true, true);
        Nothing nothing;
        std::ostream out(&nothing);
        Input input(arguments[1]);
        VokUpdate::Get().Update(out, input,
                                std::string(QelNamespaceRoot) + "/qeli/" + arguments[2] + "/qeli");
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
    return 0;
}
