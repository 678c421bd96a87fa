#include <VokLib/Objects/Constraints/VokExpression.h>
#include <VokLib/Tree/VokNode.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

constexpr std::string_view kNodes = R"(<scene><node name="a"/><node name="b"/></scene>)";

}  // namespace

TEST(VokExpression, WritesWhatItReads) {
    const std::string text = R"(<expression name="e">
<input object="||a" channel="rotateX" />
<input object="" channel="x" />
<output object="||b" channel="rotateY" />
<code>  b = a &lt; 1 &amp; 2;
c</code>
</expression>)";
    EXPECT_EQ(Rewritten<VokExpression>(std::string(kNodes) + text), text);
}

TEST(VokExpression, CodeIsStoredWholeAndAlwaysWritten) {
    EXPECT_EQ(Rewritten<VokExpression>(R"(<expression name="e"/>)"),
              "<expression name=\"e\">\n<code></code>\n</expression>");
    Scene scene("<expression name=\"e\"><code>\n a  b \n</code></expression>");
    EXPECT_EQ(scene.First<VokExpression>().code, "\n a  b \n");
}

TEST(VokExpression, ABindingNeedsObjectAndChannel) {
    for (const std::string binding : {"input", "output"}) {
        EXPECT_EQ(
            LoadFailure("<expression name=\"e\"><" + binding + " channel=\"x\"/></expression>"),
            (Failure{"Missing object attribute on expression input.", "|e"}));
        EXPECT_EQ(LoadFailure("<expression name=\"e\"><" + binding + " object=\"\"/></expression>"),
                  (Failure{"Missing channel attriubte on expression input.", "|e"}));
        EXPECT_EQ(LoadFailure("<expression name=\"e\"><" + binding + "/></expression>").text,
                  "Missing object attribute on expression input.");
    }
}

TEST(VokExpression, AChildObjectLeavesTheDepthAlone) {
    Scene scene(R"(<expression name="e"><node name="n"/><code>x</code></expression>)");
    EXPECT_EQ(scene.First<VokExpression>().GetChildCount(), 1u);
    EXPECT_EQ(scene.First<VokExpression>().code, "x");
}

TEST(VokExpression, AForeignElementLeavesTheDepthRaised) {
    // The end of customData counts as a start, so that the expression's own elements are no longer
    // known ...
    EXPECT_EQ(LoadFailure(R"(<expression name="e"><customData/><code>x</code></expression>)"),
              (Failure{"Unknown tag \"code\"", "|e"}));
    // ... and its own end makes a child of what the last start tag said.
    EXPECT_EQ(LoadFailure(R"(<expression name="e"><customData/></expression>)").text,
              "Missing attribute in parse");
    Scene scene(R"(<expression name="e"><code>x</code><customData name="inner"/></expression>
        <node name="after"/>)");
    const auto& expression = scene.First<VokExpression>();
    ASSERT_EQ(expression.GetChildCount(), 1u);
    EXPECT_EQ(expression.GetChild(0)->GetName(), "inner");
    EXPECT_TRUE(expression.GetChild(0)->IsExactly(VokExpression::TypeId()));
    EXPECT_EQ(expression.code, "x");
    EXPECT_EQ(scene.At<VokNode>("|after").GetName(), "after");
}

TEST(VokExpression, AnotherInsideLeavesTheAttributesThatItGoesBackTo) {
    Scene scene(R"(<expression name="e"><expression name="f"><code>x</code></expression>
        <customData name="inner"/></expression><node name="after"/>)");
    const auto& expression = scene.First<VokExpression>();
    ASSERT_EQ(expression.GetChildCount(), 2u);
    EXPECT_EQ(expression.GetChild(0)->GetName(), "f");
    EXPECT_EQ(expression.GetChild(1)->GetName(), "inner");
}

TEST(VokExpression, TheEndOfACustomAttributeRepeatsIt) {
    Scene scene(R"(<expression name="e"><customData><attribute name="a" type="string">t</attribute>
        </customData></expression>)");
    const auto& expression = scene.First<VokExpression>();
    EXPECT_EQ(expression.GetCustomData().GetCount(), 2u);
    ASSERT_EQ(expression.GetChildCount(), 1u);
    EXPECT_EQ(expression.GetChild(0)->GetName(), "a");
}
