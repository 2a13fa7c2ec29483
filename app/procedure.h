#pragma once

/// The line procedures, Options.processMode; any other value is no procedure.
enum Procedure { CKS = 0, SKK = 1, Direct = 2 };
