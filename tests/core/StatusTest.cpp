// Tests of the status codes and their exception.
#include "core/Core.h"

#include <gtest/gtest.h>

#include <string>

namespace NQRN20 {
namespace {

TEST(TQRNException, CarriesItsStatusAndTellsItInWords) {
    try {
        throw TQRNException(kQRNStatusNotFound);
    } catch (const std::exception& e) {
        EXPECT_EQ(std::string("not found"), e.what());
        EXPECT_EQ(kQRNStatusNotFound, dynamic_cast<const TQRNException&>(e).GetStatus());
    }
}

} // namespace
} // namespace NQRN20
