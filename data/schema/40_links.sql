-- The twelve tables of the sibling database that SystemData.mdb links, one
-- row each. DataSource names the database file the link reads; a bare file
-- name lies in the program folder. The shipped links point at the empty
-- Ledra_dummy.mdb; every start re-points them at the applicant's Ledra.mdb,
-- or at the dummy again when the application names no sibling folder.
CREATE TABLE tblLinkTable (
    TableName  TEXT,
    DataSource TEXT
);

INSERT INTO tblLinkTable (TableName, DataSource) VALUES ('T_FS', 'Ledra_dummy.mdb');
INSERT INTO tblLinkTable (TableName, DataSource) VALUES ('T_FSCapitalCol', 'Ledra_dummy.mdb');
INSERT INTO tblLinkTable (TableName, DataSource) VALUES ('T_FSCapitalRow', 'Ledra_dummy.mdb');
INSERT INTO tblLinkTable (TableName, DataSource) VALUES ('T_FSNote', 'Ledra_dummy.mdb');
INSERT INTO tblLinkTable (TableName, DataSource) VALUES ('P_FSItemData', 'Ledra_dummy.mdb');
INSERT INTO tblLinkTable (TableName, DataSource) VALUES ('M_FSItem', 'Ledra_dummy.mdb');
INSERT INTO tblLinkTable (TableName, DataSource) VALUES ('M_FSCapitalRow', 'Ledra_dummy.mdb');
INSERT INTO tblLinkTable (TableName, DataSource) VALUES ('M_FSCapitalCol', 'Ledra_dummy.mdb');
INSERT INTO tblLinkTable (TableName, DataSource) VALUES ('T_MainData', 'Ledra_dummy.mdb');
INSERT INTO tblLinkTable (TableName, DataSource) VALUES ('M_FSDoc', 'Ledra_dummy.mdb');
INSERT INTO tblLinkTable (TableName, DataSource) VALUES ('M_FSItemDetail', 'Ledra_dummy.mdb');
INSERT INTO tblLinkTable (TableName, DataSource) VALUES ('T_FSItemDetail', 'Ledra_dummy.mdb');
