// The one owning COM pointer: which calls take over a reference, which add
// one, and which give one up, counted on a hand-written object.
#include "platform/win32/ComPtr.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "platform/win32/FakeDispatch.h"

namespace t4 {
namespace {

using test::FakeDispatch;
using win32::ComPtr;

// A fresh object with the one reference the test holds itself.
FakeDispatch* NewObject() {
  return new FakeDispatch();
}

// A fresh object with two references: one to hand on, and one the test keeps
// so that it can read the count after the other has gone.
FakeDispatch* WatchedObject() {
  FakeDispatch* object = NewObject();
  object->AddRef();
  return object;
}

TEST(ComPtr, EachWayInSaysWhatItDoesWithTheReference) {
  const struct {
    const char* name;
    // Makes a ComPtr from an object the test holds one reference to; the
    // test's own reference is released afterwards unless `consumesOwn`.
    std::function<ComPtr<IDispatch>(FakeDispatch*)> make;
    bool consumesOwn;
    ULONG whileHeld;
  } cases[] = {
      {"Attach takes over the caller's reference",
       [](FakeDispatch* o) { return ComPtr<IDispatch>::Attach(o); }, true, 1},
      {"CopyFrom adds a reference of its own",
       [](FakeDispatch* o) { return ComPtr<IDispatch>::CopyFrom(o); }, false, 2},
      {"a copy adds one more",
       [](FakeDispatch* o) {
         const auto first = ComPtr<IDispatch>::CopyFrom(o);
         ComPtr<IDispatch> copy(first);
         EXPECT_EQ(o->References(), 4u);
         return copy;
       },
       false, 2},
      {"a move passes the reference on",
       [](FakeDispatch* o) {
         auto first = ComPtr<IDispatch>::Attach(o);
         ComPtr<IDispatch> moved(std::move(first));
         EXPECT_FALSE(first);
         return moved;
       },
       true, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    FakeDispatch* object = WatchedObject();
    {
      ComPtr<IDispatch> held = c.make(object);
      EXPECT_EQ(held.Get(), static_cast<IDispatch*>(object));
      EXPECT_TRUE(held);
      EXPECT_EQ(object->References(), c.whileHeld + 1);
    }
    EXPECT_EQ(object->References(), c.consumesOwn ? 1u : 2u);
    if (!c.consumesOwn) object->Release();
    EXPECT_EQ(object->Release(), 0u);
  }
}

TEST(ComPtr, NullGivesAnEmptyPointer) {
  EXPECT_FALSE(ComPtr<IDispatch>());
  EXPECT_FALSE(ComPtr<IDispatch>(nullptr));
  EXPECT_FALSE(ComPtr<IDispatch>::Attach(nullptr));
  EXPECT_FALSE(ComPtr<IDispatch>::CopyFrom(nullptr));
  ComPtr<IDispatch> empty;
  EXPECT_EQ(empty.Detach(), nullptr);
  empty.Reset();
  EXPECT_EQ(empty.Get(), nullptr);
}

TEST(ComPtr, DetachGivesTheReferenceUp) {
  FakeDispatch* object = NewObject();
  auto held = ComPtr<IDispatch>::Attach(object);
  IDispatch* raw = held.Detach();
  EXPECT_FALSE(held);
  EXPECT_EQ(object->References(), 1u);
  EXPECT_EQ(raw->Release(), 0u);
}

TEST(ComPtr, ResetAndAssignmentReleaseWhatWasHeld) {
  FakeDispatch* first = WatchedObject();
  FakeDispatch* second = WatchedObject();
  auto held = ComPtr<IDispatch>::Attach(first);
  held = ComPtr<IDispatch>::Attach(second);
  EXPECT_EQ(first->References(), 1u);
  EXPECT_EQ(second->References(), 2u);
  held = held;  // self-assignment keeps the reference
  EXPECT_EQ(second->References(), 2u);
  held.Reset();
  EXPECT_EQ(second->References(), 1u);
  EXPECT_EQ(first->Release(), 0u);
  EXPECT_EQ(second->Release(), 0u);
}

TEST(ComPtr, PutReleasesAndOwnsWhatTheCallFillsIn) {
  FakeDispatch* source = NewObject();
  FakeDispatch* old = WatchedObject();
  auto held = ComPtr<IDispatch>::Attach(old);
  // QueryInterface hands out a reference of its own through the slot.
  ASSERT_EQ(source->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(held.Put())), S_OK);
  EXPECT_EQ(old->References(), 1u);
  EXPECT_EQ(held.Get(), static_cast<IDispatch*>(source));
  EXPECT_EQ(source->References(), 2u);
  held.Reset();
  EXPECT_EQ(source->Release(), 0u);
  EXPECT_EQ(old->Release(), 0u);
}

}  // namespace
}  // namespace t4
