// The file that holds the registry: its place, its making, and the judgement of a file that is there.
#pragma once

#include "platform/linux/base/Failure.h"

#include <cstdint>
#include <string>

// The version of the tables that CreateRegistryFile makes.
inline constexpr std::int64_t nRegistryVersion = 1;

// The statements that make them, as SQLite keeps their texts, with ";" and a line end between two.
extern const char szRegistryTables[];

// The absolute path of the database, for this process:
// - what the environment variable ZEVRIN_REGISTRY names, for tests and portable installations;
// - otherwise the machine's, /var/lib/zevrinutils/registry.db, for an account that may write it;
// - otherwise the account's own, $XDG_DATA_HOME/zevrinutils/registry.db, under ~/.local/share by default.
std::string RegistryPath();

// Makes the database, with all missing folders, where there is no file. Throws a Failure, and makes no file
// then; so too where the log of a database stands alone, which may hold what was written last.
void CreateRegistryFile(const std::string& strPath);

// Throws a Failure unless the file is a registry by its first bytes and, without a log, its size. SQLite is not
// let near another's file: it could find a journal there, and act on it. Only while this process has no connection to
// the file: closing any descriptor of a file drops all locks that the process holds on it, those of SQLite too.
void RequireRegistryFile(const std::string& strPath);
