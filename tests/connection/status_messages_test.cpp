// The message of every status, word for word, and the errors that carry them.
#include "connection/status_messages.h"

#include <cstdint>
#include <limits>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include <larkmoor/error.h>

namespace larkmoor {
namespace {

// Users know these texts, the slips of the pen in them included: "pre-iamge" and "accomodate" stay.
const std::map<Status, std::string> ListedMessages = {
    {2,
     "Btrieve error 2: I/O Error\r\n"
     "\r\n"
     "An error occurred during a disk read or write\r\n"
     "due to a damaged file, hardware error, or\r\n"
     "system error.  A status 2 error can also be the\r\n"
     "result of a poor network connection or improper\r\n"
     "network configuration.  Repeated status 2s on\r\n"
     "the same file indicate that the file is probably\r\n"
     "severely damaged and should be restored from the\r\n"
     "current backup."},
    {3,
     "Btrieve error 3: File Not Opened\r\n"
     "\r\n"
     "A file must be opened before any Btrieve\r\n"
     "operation can be performed on it."},
    {4,
     "Btrieve error 4: Key Value Not Found\r\n"
     "\r\n"
     "The value in the Key Buffer was not in the index\r\n"
     "specified by the Key Number on a search operation."},
    {5,
     "Btrieve error 5: Duplicate Key Value\r\n"
     "\r\n"
     "An attempt was made to insert a record with a key field\r\n"
     "containing a duplicate key value to an index that does\r\n"
     "not allow duplicate values."},
    {6,
     "Btrieve error 6: Invalid Key Number\r\n"
     "\r\n"
     "The value stored in the Key Number parameter\r\n"
     "was not valid for the file being accessed.\r\n"
     "The Key Number must be in the range of 0 to\r\n"
     "(n-1), where n is the number of key index\r\n"
     "paths including indexes."},
    {7,
     "Btrieve error 7: Different Key Number\r\n"
     "\r\n"
     "A Get Next or Get Previous operation attempted\r\n"
     "to retrieve a record using a key path other than\r\n"
     "the key path on which positioning was established.\r\n"
     "To switch key paths, use the Get Position operation\r\n"
     "followed by a Get Direct operation specifying the\r\n"
     "new key path."},
    {8,
     "Btrieve error 8: Invalid Positioning\r\n"
     "\r\n"
     "An attempt was made to update or delete a record\r\n"
     "when positioning was not properly established."},
    {9,
     "Btrieve error 9: End Of File\r\n"
     "\r\n"
     "An attempt was made to read past the end or\r\n"
     "beginning of a file."},
    {10,
     "Btrieve error 10: Modifiable Key Value Error\r\n"
     "\r\n"
     "An update operation was attempted that would\r\n"
     "change a non-modifiable key."},
    {11,
     "Btrieve error 11: Invalid File Name\r\n"
     "\r\n"
     "An illegal file name was specified that the\r\n"
     "operating system did not accept.\r\n"
     "\r\n"
     "Make sure the company path is valid."},
    {12,
     "Btrieve error 12: File not found\r\n"
     "\r\n"
     "The file name specified does not exist."},
    {13,
     "Btrieve error 13: Extended File Error\r\n"
     "\r\n"
     "Btrieve was unable to find the extension file for an\r\n"
     "extended file.  The name of an extension file is stored\r\n"
     "in the File Control Record.  If the extension file is\r\n"
     "moved or renamed, an Extended File Error will result."},
    {14,
     "Btrieve error 14: Pre-Image Open Error\r\n"
     "\r\n"
     "The pre-image file could not be created or\r\n"
     "opened for one of the following reasons:\r\n"
     "   o The disk was full.\r\n"
     "   o The pre-image file was erased,\r\n"
     "     renamed, or damaged.\r\n"
     "   o The user did not have proper access\r\n"
     "     access rights to the pre-image file."},
    {15,
     "Btrieve error 15: Pre-Image I/O Error\r\n"
     "\r\n"
     "An I/O error occurred during the pre-imaging function.\r\n"
     "This is caused by a full disk or a damaged pre-iamge file."},
    {22,
     "Btrieve error 22: Data Buffer Length\r\n"
     "\r\n"
     "The Data Buffer parameter was not long enough to accomodate\r\n"
     "the fixed record length of the file.  For variable-length records,\r\n"
     "a status 22 indicates that the retrieved record was larger than\r\n"
     "the Data Buffer, and only a portion of the record was returned\r\n"
     "(as much as the Data Buffer Length parameter specified).\r\n"
     "--------------------------------------------------"
     "--------------------------------------------------\r\n"
     "Typically this error occurs because Peachtree has somehow\r\n"
     "written a journal record with the wrong length.  It ignores this\r\n"
     "error during normal operations, but the error can cause problems\r\n"
     "later, such as during closing."},
    {41,
     "Btrieve error 41: Operation Not Allowed\r\n"
     "\r\n"
     "This was probably caused by an attempt to close\r\n"
     "a file during a transaction."},
    {46,
     "Btrieve error 46: Access to File Denied\r\n"
     "\r\n"
     "An attempt was made to perform an update,\r\n"
     "delete, or insert operation on a file that\r\n"
     "was opened in Read-Only mode.  Otherwise,\r\n"
     "an attempt was made to update a file where\r\n"
     "the owner name was not specified."},
    {58,
     "Btrieve error 58: Compression Buffer Too Short\r\n"
     "\r\n"
     "An attempt was made to read or write a record that\r\n"
     "is longer than the value specified for the size of\r\n"
     "the compression buffer.  Reload Btrieve with a\r\n"
     "larger 'Maximum Compressed Record Size' option\r\n"
     "(/U for workstation Btrieve) that is at least as\r\n"
     "large as the largest record your application will\r\n"
     "access."},
    {80,
     "Btrieve error 80: Record Conflict\r\n"
     "\r\n"
     "A file modification operation was attempted to modify\r\n"
     "a record that was modified by another application since\r\n"
     "time the record was retrieved.  The record must be\r\n"
     "retrieved again before it can be modified."},
    {84,
     "Btrieve error 84: Record Locked\r\n"
     "\r\n"
     "An attempt was made to update or lock a record\r\n"
     "that was currently locked, or to lock a file that\r\n"
     "has locked records.  Continue to retry the operation\r\n"
     "until the record becomes unlocked."},
    {85,
     "Btrieve error 85: File Locked\r\n"
     "\r\n"
     "An attempt was made to use a No-Wait lock to\r\n"
     "update or lock a record in a file that is\r\n"
     "currently locked by another application.\r\n"
     "Continue to retry the operation until the file\r\n"
     "becomes unlocked."},
    {86,
     "Btrieve error 86: File Table full\r\n"
     "\r\n"
     "An attempt was made to open a file while Btrieve's\r\n"
     "internal file table was full.  Reload Btrieve with\r\n"
     "a larger 'Maximum Number of Open Files' option\r\n"
     "(/F parameter for workstation Btrieve) that is\r\n"
     "sufficient to handle all concurrently open files\r\n"
     "in the application."},
    {87,
     "Btrieve error 87: Handle table full\r\n"
     "\r\n"
     "An attempt was made to open a file while Btrieve's\r\n"
     "internal file handle table was full.  Reload\r\n"
     "Btrieve with a larger 'Maximum Number of File\r\n"
     "Handles' option."},
    {88,
     "Btrieve error 88: Incompatible Mode Error\r\n"
     "\r\n"
     "An attempt was made to open a file while another\r\n"
     "application had the same file open in an\r\n"
     "incompatible mode."},
    {94,
     "Btrieve error 94: Permission Error\r\n"
     "\r\n"
     "An attempt was made to open a file in Read-Write\r\n"
     "mode (Key Number = 0) or create or update a file\r\n"
     "in a directory where 'Write' access rights are not\r\n"
     "granted."},
};

std::string BareMessage(int status) { return "Btrieve error " + std::to_string(status); }

class ListedStatus : public testing::TestWithParam<std::pair<const Status, std::string>> {};

TEST_P(ListedStatus, GivesItsMessageWordForWord) {
  const auto& [status, message] = GetParam();
  EXPECT_EQ(BtrieveErrorText(status), message);
}

INSTANTIATE_TEST_SUITE_P(StatusMessages, ListedStatus, testing::ValuesIn(ListedMessages),
                         [](const auto& tested) { return std::to_string(tested.param.first); });

TEST(StatusMessages, EveryOtherNumberGivesItselfAlone) {
  for (int number = std::numeric_limits<Status>::min();
       number <= std::numeric_limits<Status>::max(); ++number) {
    const auto status = static_cast<Status>(number);
    if (ListedMessages.contains(status)) continue;
    ASSERT_EQ(BtrieveErrorText(status), BareMessage(number));
  }
}

TEST(StatusMessages, SuccessHasNoMessageOfItsOwn) {
  EXPECT_EQ(BtrieveErrorText(StatusSuccess), "Btrieve error 0");
}

TEST(StatusMessages, ANegativeNumberBearsItsSign) {
  EXPECT_EQ(BtrieveErrorText(-7), "Btrieve error -7");
  EXPECT_EQ(BtrieveErrorText(-32768), "Btrieve error -32768");
}

// 18 and 30 are statuses that the store does give, 51 one that an owner name causes.
TEST(StatusMessages, SomeStatusesOfTheEngineHaveNoMessage) {
  EXPECT_EQ(BtrieveErrorText(18), "Btrieve error 18");
  EXPECT_EQ(BtrieveErrorText(30), "Btrieve error 30");
  EXPECT_EQ(BtrieveErrorText(51), "Btrieve error 51");
}

TEST(StatusMessages, OnlyTheInvalidFileNameHasABlankLineAmongItsLines) {
  for (const auto& [status, message] : ListedMessages) {
    const std::string text = BtrieveErrorText(status);
    const std::size_t afterTitle = text.find("\r\n\r\n") + 4;
    EXPECT_EQ(text.find("\r\n\r\n", afterTitle) != std::string::npos, status == 11) << status;
  }
}

TEST(StatusMessages, NoMessageEndsInALineBreak) {
  for (const auto& [status, message] : ListedMessages) {
    EXPECT_NE(BtrieveErrorText(status).back(), '\n') << status;
  }
}

TEST(StatusMessages, TheRuleInTheDataBufferMessageIsAHundredHyphensLong) {
  EXPECT_NE(BtrieveErrorText(22).find("\r\n" + std::string(100, '-') + "\r\n"), std::string::npos);
}

TEST(StatusMessages, AnErrorNumberIsTheSignedFormOfItsBits) {
  EXPECT_EQ(ErrorOpen, -2147220991);
  EXPECT_EQ(ErrorClose, -2147220990);
  EXPECT_EQ(ErrorRead, -2147220988);
  EXPECT_EQ(ErrorAccount, -2147220987);
}

/// What `RaiseBtrieveError` raises.
Error Raised(std::int32_t number, std::string_view source, Status status) {
  try {
    RaiseBtrieveError(number, source, status);
  } catch (const Error& error) {
    return error;
  }
}

TEST(RaiseBtrieveError, DescribesTheFailedStepAndTheStatus) {
  const Error error = Raised(ErrorOpen, "Employee.OpenFile failed", 12);
  EXPECT_EQ(error.Number(), ErrorOpen);
  EXPECT_EQ(error.Source(), "Tovrin");
  EXPECT_EQ(error.Description(),
            "Employee.OpenFile failed\r\n"
            "\r\n"
            "Btrieve error 12: File not found\r\n"
            "\r\n"
            "The file name specified does not exist.");
  EXPECT_EQ(error.BtrieveStatus(), 12);
}

TEST(RaiseBtrieveError, OfAStatusWithoutMessageNamesItsNumber) {
  const Error error = Raised(ErrorRead, "Alarm.ID->Chart.GetEqual(7) failed", 51);
  EXPECT_EQ(error.Description(),
            "Alarm.ID->Chart.GetEqual(7) failed\r\n"
            "\r\n"
            "Btrieve error 51");
  EXPECT_EQ(error.BtrieveStatus(), 51);
}

TEST(RaiseBtrieveError, TakesAnyNumberAndAnyStatus) {
  const Error error = Raised(-1, "", 0);
  EXPECT_EQ(error.Number(), -1);
  EXPECT_EQ(error.Source(), "Tovrin");
  EXPECT_EQ(error.Description(), "\r\n\r\nBtrieve error 0");
  EXPECT_EQ(error.BtrieveStatus(), StatusSuccess);
}

TEST(RaiseBtrieveError, IsAStandardExceptionWithTheSameText) {
  try {
    RaiseBtrieveError(ErrorClose, "Alarm.CloseFile: Customer", 3);
  } catch (const std::exception& error) {
    EXPECT_EQ(std::string(error.what()), "Alarm.CloseFile: Customer\r\n\r\n" + BtrieveErrorText(3));
  }
}

}  // namespace
}  // namespace larkmoor
