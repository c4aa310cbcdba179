#include "KSL/InterfaceRef.h"
#include "KSL/IStation.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string_view>

namespace {

class IGreeter : public KSL::IObject {
public:
    static constexpr const char* kInterfaceID = "{0D9B33F6-0B5E-4F8A-9E0C-3F1C2B6A7D10}";
    virtual int Greet() const = 0;
};

// Counts live objects, so the test sees when the last reference frees one.
std::atomic<int> gLiveObjects{0};

class Greeter final : public IGreeter, public KSL::IStation {
public:
    Greeter() { ++gLiveObjects; }
    ~Greeter() override { --gLiveObjects; }

    void AddRef() const noexcept override { ++refs_; }
    void Release() const noexcept override {
        if (--refs_ == 0) {
            delete this;
        }
    }
    void* QueryInterface(std::string_view id) const noexcept override {
        auto* self = const_cast<Greeter*>(this);
        if (id == IGreeter::kInterfaceID) {
            return static_cast<IGreeter*>(self);
        }
        if (id == KSL::IStation::kInterfaceID) {
            return static_cast<KSL::IStation*>(self);
        }
        return nullptr;
    }
    int Greet() const override { return 42; }
    KSL::StationID GetStationID() const override { return "greeter"; }

    int RefCount() const { return refs_; }

private:
    mutable std::atomic<int> refs_{0};
};

class IUnsupported : public KSL::IObject {
public:
    static constexpr const char* kInterfaceID = "{00000000-0000-0000-0000-000000000001}";
};

TEST(InterfaceRefTest, CountsReferencesAndFreesWithTheLast) {
    auto* raw = new Greeter;
    {
        KSL::InterfaceRef<IGreeter> a(raw);
        EXPECT_EQ(raw->RefCount(), 1);
        KSL::InterfaceRef<IGreeter> b = a;
        EXPECT_EQ(raw->RefCount(), 2);
        KSL::InterfaceRef<IGreeter> c = std::move(b);
        EXPECT_EQ(raw->RefCount(), 2);
        EXPECT_FALSE(b);
        c = a;
        EXPECT_EQ(raw->RefCount(), 2);
        a.Reset();
        EXPECT_EQ(raw->RefCount(), 1);
        EXPECT_EQ(gLiveObjects, 1);
    }
    EXPECT_EQ(gLiveObjects, 0);
}

TEST(InterfaceRefTest, QueriesOtherInterfacesOfTheSameObjectByGuid) {
    KSL::InterfaceRef<IGreeter> greeter(new Greeter);
    auto station = greeter.QueryInterface<KSL::IStation>();
    ASSERT_TRUE(station);
    EXPECT_EQ(station->GetStationID(), KSL::StationID("greeter"));
    EXPECT_EQ(station.QueryInterface<IGreeter>(), greeter);
    EXPECT_FALSE(greeter.QueryInterface<IUnsupported>());
    EXPECT_FALSE(KSL::InterfaceRef<IGreeter>().QueryInterface<KSL::IStation>());
    EXPECT_EQ(KSL::StationOf(greeter), KSL::StationID("greeter"));
    EXPECT_TRUE(KSL::StationOf(KSL::InterfaceRef<IGreeter>()).IsNull());
    EXPECT_EQ(static_cast<Greeter*>(greeter.Get())->RefCount(), 2);
    station.Reset();
    EXPECT_EQ(static_cast<Greeter*>(greeter.Get())->RefCount(), 1);
}

TEST(InterfaceRefTest, ComparesByIdentityAndConvertsToBaseInterfaces) {
    KSL::InterfaceRef<IGreeter> one(new Greeter);
    KSL::InterfaceRef<IGreeter> other(new Greeter);
    KSL::InterfaceRef<IGreeter> sameAsOne = one;
    EXPECT_EQ(one, sameAsOne);
    EXPECT_FALSE(one == other);
    EXPECT_NE(one < other, other < one);
    KSL::InterfaceRef<KSL::IObject> base = one;
    EXPECT_EQ(base.Get(), static_cast<KSL::IObject*>(one.Get()));
    EXPECT_EQ(KSL::InterfaceRef<IGreeter>(), nullptr);
}

} // namespace
