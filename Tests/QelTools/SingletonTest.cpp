#include <QelTools/Singleton.h>

#include <gtest/gtest.h>

#include <memory>
#include <new>

namespace {

class Service : public QelTools::Common::Singleton<Service> {
  public:
    static const char* SingletonName() { return "Service"; }
    int answer = 42;
};

class OtherService : public QelTools::Common::Singleton<OtherService> {
  public:
    static const char* SingletonName() { return "OtherService"; }
};

struct Base {
    virtual ~Base() noexcept(false) {}
    int padding = 0;
};

class BehindAnotherBase : public Base, public QelTools::Common::Singleton<BehindAnotherBase> {
  public:
    static const char* SingletonName() { return "BehindAnotherBase"; }
};

/// The text of what an operation throws.
template <class Operation>
std::string Failure(Operation operation) {
    try {
        operation();
    } catch (const QelTools::Common::Exception&) {
        return "an exception with a position";
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return "nothing thrown";
}

TEST(Singleton, GetGivesTheObject) {
    Service service;
    EXPECT_EQ(&Service::Get(), &service);
    EXPECT_EQ(Service::Get().answer, 42);
    EXPECT_TRUE(Service::Exists());
}

TEST(Singleton, GetWithoutAnObjectThrows) {
    EXPECT_FALSE(Service::Exists());
    EXPECT_EQ(Failure([] { Service::Get(); }),
              "QelTools::Common::Singleton<class Service>::Get: we don't have an instance");
}

TEST(Singleton, ASecondObjectThrowsAndTheFirstStays) {
    Service service;
    EXPECT_EQ(Failure([] { Service second; }),
              "QelTools::Common::Singleton<class Service>::Singleton: we already have an instance");
    EXPECT_EQ(&Service::Get(), &service);
}

TEST(Singleton, AnotherObjectMayFollow) {
    { Service service; }
    Service service;
    EXPECT_EQ(&Service::Get(), &service);
}

TEST(Singleton, ADestructorWithoutAnObjectThrows) {
    alignas(Service) unsigned char memory[sizeof(Service)];
    auto* const service = new (memory) Service;
    service->~Service();
    EXPECT_EQ(Failure([service] { service->~Service(); }),
              "QelTools::Common::Singleton<class Service>::~Singleton: we don't have an instance");
}

TEST(Singleton, EachClassHasAnObjectOfItsOwn) {
    Service service;
    EXPECT_FALSE(OtherService::Exists());
    OtherService other;
    EXPECT_EQ(&OtherService::Get(), &other);
}

TEST(Singleton, GetGivesTheObjectItselfWhateverBasesStandInFront) {
    BehindAnotherBase object;
    EXPECT_EQ(&BehindAnotherBase::Get(), &object);
}

}  // namespace
