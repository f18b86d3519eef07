// LocalProgramFixture: one quarv-localdb with its sample, for all tests of a suite.
#pragma once

#include <QTemporaryDir>
#include <memory>

#include "ClientRuns.h"
#include "RunningProgram.h"

namespace quarv::localdb::server {

class LocalProgramFixture : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        home_ = std::make_unique<QTemporaryDir>();
        program_ = std::make_unique<RunningProgram>(home_->path(),
                                                    QStringList{QStringLiteral("--sample")});
        target_.port = program_->Port();
    }
    static void TearDownTestSuite() {
        EXPECT_EQ(program_->Stop(), 0);
        program_.reset();
        home_.reset();
    }
    void SetUp() override { ASSERT_GT(target_.port, 0) << "the server does not serve"; }

    static inline std::unique_ptr<QTemporaryDir> home_;
    static inline std::unique_ptr<RunningProgram> program_;
    static inline Target target_;
};

}  // namespace quarv::localdb::server
