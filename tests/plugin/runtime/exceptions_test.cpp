#include "runtime/exceptions.h"

#include <stdexcept>

#include "support/host_fixture.h"

namespace {

using tests::ServiceWithheld;

class Exceptions : public tests::HostTest {
 protected:
  static void ExpectRaised(const char* className, const std::string& message, std::int64_t number = 0) {
    const auto raised = TakeRaised();
    ASSERT_TRUE(raised.has_value()) << "no exception was raised; expected: " << message;
    EXPECT_EQ(raised->className, className);
    EXPECT_EQ(raised->message, message);
    EXPECT_EQ(raised->errorNumber, number);
  }
};

TEST_F(Exceptions, CarryClassMessageAndNumber) {
  zkt::RaiseException("NilObjectException", "Größe", -5);
  ExpectRaised("NilObjectException", "Größe", -5);
  zkt::RaiseException("NoSuchException", "text", 1LL << 40);
  ExpectRaised("RuntimeException", "text", 1LL << 40);
  zkt::RaiseException("RuntimeException", nullptr);
  ExpectRaised("RuntimeException", "");
}

TEST_F(Exceptions, RequireHostServices) {
  {
    const ServiceWithheld absent(zkt::REALnewInstance);
    zkt::RaiseException("RuntimeException", "text");
    EXPECT_FALSE(TakeRaised().has_value());
  }
  {
    const ServiceWithheld absent(zkt::REALRaiseException);
    zkt::RaiseException("RuntimeException", "text");
    EXPECT_FALSE(TakeRaised().has_value());
  }
  {
    const tests::ServiceReplaced throws(
        zkt::REALBuildStringWithEncoding,
        [](const void*, std::int64_t, std::uint32_t) -> REALstring { throw std::bad_alloc(); });
    zkt::RaiseException("RuntimeException", "text", 7);
    ExpectRaised("RuntimeException", "", 7);
  }
  const ServiceWithheld noMessage(zkt::REALSetPropValueString);
  zkt::RaiseException("RuntimeException", "text", 7);
  ExpectRaised("RuntimeException", "", 7);
}

TEST_F(Exceptions, OutOfBoundsNamesRangeAndValue) {
  zkt::RaiseOutOfBoundsException(7, 5);
  ExpectRaised("OutOfBoundsException", "The parameter index  is too big. Range is 0 to 4, but value is 7.");
  zkt::RaiseOutOfBoundsException(-1, 10);
  ExpectRaised("OutOfBoundsException", "The parameter index  is too small. Range is 0 to 9, but value is -1.");
  zkt::RaiseOutOfBoundsException(INT64_MIN, 0);
  ExpectRaised("OutOfBoundsException",
               "The parameter index  is too small. Range is 0 to -1, but value is -9223372036854775808.");
}

struct Nameless : std::exception {
  const char* what() const noexcept override { return ""; }
};

TEST_F(Exceptions, TranslateStandardExceptions) {
  const auto raise = [](const auto& exception) {
    EXPECT_EQ(zkt::TranslateExceptions([&]() -> int { throw exception; }), 0);
  };
  raise(std::bad_alloc());
  ExpectRaised("OutOfMemoryException", "Failed to allocate memory: std::bad_alloc");
  raise(std::range_error("r"));
  ExpectRaised("OutOfBoundsException", "C++ reports range error: r");
  raise(std::out_of_range(""));
  ExpectRaised("OutOfBoundsException", "C++ reports range error.");
  raise(std::overflow_error("o"));
  ExpectRaised("OutOfBoundsException", "C++ reports overflow error: o");
  raise(std::underflow_error("u"));
  ExpectRaised("OutOfBoundsException", "C++ reports underflow error: u");
  raise(std::length_error("too long"));
  ExpectRaised("RuntimeException", "C++ Exception: too long");
  raise(Nameless());
  ExpectRaised("RuntimeException", "C++ Exception.");
  EXPECT_EQ(tests::TraceOf([&] { raise(42); }), "Unnamed C++ Exception.|");
  ExpectRaised("RuntimeException", "Sorry, but there was an unnamed C++ Exception.");
}

}  // namespace
