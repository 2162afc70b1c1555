-- The tables both sibling databases of the link tests have; each file then
-- takes rows of its own.
CREATE TABLE T_FS (FSDataCode INTEGER, FYearFrom DATETIME, ApplyerName TEXT, TaxFreeFlag BOOLEAN);
CREATE TABLE M_FSDoc (DocCode INTEGER, DocName TEXT);
