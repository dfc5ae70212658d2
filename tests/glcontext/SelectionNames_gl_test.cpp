#include "glcontext/StateGuards_gl.h"

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

class SelectionNamesTest : public test::GlTest {
 protected:
  /// The names of the hit records of what `draw` draws, one list a record.
  template <class Draw>
  static std::vector<std::vector<GLuint>> namesHit(Draw draw) {
    GLuint buffer[64] = {};
    glSelectBuffer(64, buffer);
    glRenderMode(GL_SELECT);
    glInitNames();
    draw();
    const GLint hits = glRenderMode(GL_RENDER);
    std::vector<std::vector<GLuint>> records;
    const GLuint* at = buffer;
    for (GLint i = 0; i < hits; ++i) {
      const GLuint count = *at;
      records.emplace_back(at + 3, at + 3 + count);
      at += 3 + count;
    }
    return records;
  }

  static void drawSquare() { glRectf(-0.5F, -0.5F, 0.5F, 0.5F); }
};

using Records = std::vector<std::vector<GLuint>>;

TEST_F(SelectionNamesTest, TypeGoesBeforeTheName) {
  EXPECT_EQ(namesHit([] {
              const SelectionNames names(7, 42, true);
              drawSquare();
            }),
            (Records{{7, 42}}));
}

TEST_F(SelectionNamesTest, TheNameAloneWhereTheTypeIsNotAskedFor) {
  EXPECT_EQ(namesHit([] {
              const SelectionNames names(7, 0, false);
              drawSquare();
            }),
            (Records{{0}}));
}

TEST_F(SelectionNamesTest, ANegativeNamePushesNothing) {
  EXPECT_EQ(namesHit([] {
              const SelectionNames names(7, -1, true);
              drawSquare();
            }),
            (Records{{}}));
}

TEST_F(SelectionNamesTest, NamesEndWithTheirObject) {
  EXPECT_EQ(namesHit([] {
              {
                const SelectionNames names(1, 2, true);
                drawSquare();
              }
              {
                const SelectionNames names(3, 4, false);
                drawSquare();
              }
              drawSquare();
            }),
            (Records{{1, 2}, {4}, {}}));
}

TEST_F(SelectionNamesTest, ANegativeTypeIsANameLikeAnyOther) {
  EXPECT_EQ(namesHit([] {
              const SelectionNames names(-1, 5, true);
              drawSquare();
            }),
            (Records{{0xFFFFFFFF, 5}}));
}

TEST_F(SelectionNamesTest, DoesNothingOutsideASelectionPass) {
  const test::GlState before = test::readGlState();
  {
    const SelectionNames names(1, 2, true);
    EXPECT_EQ(test::differences(before, test::readGlState()), test::kNone);
  }
  EXPECT_EQ(test::differences(before, test::readGlState()), test::kNone);
}

}  // namespace
}  // namespace zyn
