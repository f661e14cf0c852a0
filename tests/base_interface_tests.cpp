// The object base as a host application sees it: the exceptions.
#include "support.h"

#include <exception>
#include <type_traits>

using namespace HALVANE;
using QUILLET::IQuilletObject;

namespace {

// ---- The exceptions derive from nothing but their own root.

static_assert(!std::is_base_of<std::exception, QuilletRootException>::value, "no std::exception");
static_assert(std::is_base_of<QuilletRootException, QuilletException>::value, "");
static_assert(std::is_base_of<QuilletException, OutOfRangeException>::value, "");
static_assert(std::is_base_of<QuilletException, BinaryParsingException>::value, "");
static_assert(std::is_base_of<QuilletException, IncompleteDefinitionException>::value, "");
static_assert(std::is_base_of<QuilletException, InvalidXmlException>::value, "");
static_assert(std::is_copy_constructible<InvalidXmlException>::value, "");
static_assert(std::is_constructible<QuilletRootException, const QString &>::value, "");

} // namespace

TEST(BaseInterface, LibraryErrorsPassStdExceptionHandlers)
{
    ModeManager m;
    IQuilletObject &object = m;
    bool seenAsStd = false;
    try {
        try {
            object.SetXmlString(QStringLiteral("<RDSResult/>"));
        } catch (const std::exception &) {
            seenAsStd = true;
        }
        ADD_FAILURE() << "no exception";
    } catch (const QuilletRootException &e) {
        EXPECT_EQ(e.GetMessage(), QStringLiteral("ModeManager: root element 'RDSResult' at line 1, column 12 is not 'ModeManager'"));
        const QuilletRootException copy = e;
        EXPECT_EQ(copy.GetMessage(), e.GetMessage());
    }
    EXPECT_FALSE(seenAsStd);
}
