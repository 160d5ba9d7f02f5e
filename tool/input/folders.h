// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// \file
/// Folders among the files of the command line: each stands for the documents in it and in the folders below.

namespace tool {

/// What is in a folder and in those below it, each with the folder's name before it and in the order of
/// names.
struct FolderContent {
    std::vector<std::string> documents;   ///< what has the name of a document, or holds one; archives
    std::vector<std::string> passedOver;  ///< everything else: other files, hidden ones, links to folders
    std::vector<std::string> unread;      ///< folders that could not be looked into
    std::string leftOut;                  ///< the folder that is not to be looked into, if it is below
};

/// Looks through a folder. Links to files are followed, those to folders are not, so that this ends. Nothing
/// is opened but files: to open a pipe would mean to wait for its other end. `results`, which may be "", is a
/// folder that is left out where it is below this one.
FolderContent contentOf(const std::string& folder, const std::string& results = {});

/// True for the name of a folder that exists.
bool isFolder(const std::string& name);

}  // namespace tool
