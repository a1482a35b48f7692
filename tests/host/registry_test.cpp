#include "host/rx/registry.h"

#include <gtest/gtest.h>

#include "host/rx/editor.h"

namespace {

class Shape : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(Shape)
};
ACRX_DEFINE_MEMBERS(Shape)

class Circle : public Shape {
 public:
  ACRX_DECLARE_MEMBERS(Circle)
};
ACRX_DEFINE_MEMBERS(Circle)

TEST(Registry, LinksClassesAndForgetsDeletedOnes) {
  // The child comes first: the hierarchy is built afterwards.
  Circle::gpDesc = newBrxClass(
      L"TestCircle", L"TestShape", 1, 2, 3, []() -> AcRxObject* { return new Circle; }, nullptr,
      L"TESTCIRCLE", L"Tests");
  Shape::gpDesc = newAcRxClass(L"TestShape", L"AcRxObject");
  acrxBuildClassHierarchy();

  EXPECT_EQ(Circle::desc()->myParent(), Shape::desc());
  EXPECT_EQ(host::findClass(L"TestCircle"), Circle::desc());
  EXPECT_EQ(host::findClassByDxfName(L"TESTCIRCLE"), Circle::desc());
  const std::unique_ptr<AcRxObject> made(Circle::desc()->create());
  EXPECT_TRUE(made->isKindOf(Shape::desc()));
  EXPECT_TRUE(made->isKindOf(AcRxObject::desc()));
  EXPECT_EQ(Circle::cast(made.get()), made.get());
  const Shape shape;
  EXPECT_EQ(Circle::cast(&shape), nullptr);

  deleteAcRxClass(Circle::desc());
  EXPECT_EQ(host::findClass(L"TestCircle"), nullptr);
  EXPECT_EQ(host::findClassByDxfName(L"TESTCIRCLE"), nullptr);
  EXPECT_EQ(Circle::desc()->create(), nullptr) << "the module behind it may be gone";
  EXPECT_TRUE(made->isKindOf(Shape::desc())) << "objects that are left keep their class";
}

struct Listener : AcEditorReactor {
  std::wstring heard;
  Listener* removes = nullptr;
  void commandEnded(const ACHAR* command) override {
    heard += command;
    if (removes) host::editor().removeReactor(removes);
  }
};

TEST(Editor, TellsReactorsThatAreStillThere) {
  auto* const editor = static_cast<AcEditor*>(&host::editor());
  ASSERT_EQ(acrxSysRegistry()->at(L"AcEditor"), editor);
  Listener first, second;
  editor->addReactor(&first);
  editor->addReactor(&first);
  editor->addReactor(&second);
  first.removes = &second;
  host::editor().tell([](AcEditorReactor& each) { each.commandEnded(L"x"); });
  EXPECT_EQ(first.heard, L"x");
  EXPECT_EQ(second.heard, L"");
  editor->removeReactor(&first);
}

}  // namespace
