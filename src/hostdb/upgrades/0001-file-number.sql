-- The file gets a number, and remembers what the program installed.
CREATE TABLE _Installed (
  Kind nvarchar(10) NOT NULL,
  Name nvarchar(128) NOT NULL COLLATE NOCASE,
  Fingerprint nvarchar(40) NOT NULL,
  PRIMARY KEY (Kind, Name)
) WITHOUT ROWID;

-- What the second set of procedures was. One that was taken away or changed since stays so until the program brings another text.
INSERT INTO _Installed (Kind, Name, Fingerprint)
SELECT 'procedure', column1, column2
FROM (
  VALUES
    ('proc__OptionVersion', '1b81c3e9c0535087032c08c0889e91a962ca6d81'),
    ('proc_addp__Log', 'b4b4f8b493927d5ef50217e70d9d6b7a75034572'),
    ('proc_addp__Marketing_Log', '806faafb1492674f1bcae2712faa76cccb55822a'),
    ('proc_addp__OptionsUser', '7dbd72bf95467aecc6de380ebc58ce19e4c16189'),
    ('proc_addp_Campaign_Claim', '30a6464c9c9c0da89a8ec818cf42124e5b99be1b'),
    ('proc_addp_Email', '18712bc78e770bb9d2970f66dae06370c9824ad1'),
    ('proc_addp_Marketing_Campaign', '709ed933b73a1bdc315da4c22a2e055499b820ab'),
    ('proc_addp_SMS', '735310989fb1ab4e8a4f468434f4928c2725726d'),
    ('proc_copy_Marketing_Campaign', 'ca7cd6027daed1d6ed97223df89d4bf9165b1037'),
    ('proc_delp_Campaign_Claim', 'ea7da52abc530fd68179f0da61f709eed19bd760'),
    ('proc_delp_Campaign_Results', '038a20605ad42e1dfc2c73df7c63cf51052dd7de'),
    ('proc_delp_Marketing_Campaign', '1a9dea6c4f6f095101c57d6d1802d0c6576158ad'),
    ('proc_delp_Send_Journal', 'd1009aeb1edb59e008121064decf8d3a923b79f7'),
    ('proc_Marketing_AddAllCustomers', '8dcc6a2a81b08f63c0998d83a59122de6289ca5a'),
    ('proc_Marketing_AddAllEngines', '3d437ac0ac2f6bc1221a71a01b291ab776abb30c'),
    ('proc_Marketing_AddAllVehicles', 'a7b0d91fde69bc7e1aa243b430a0ae3297f91419'),
    ('proc_sel_Customer_Types', '19c668e64d6bae14634e44929318b38f320a2b02'),
    ('proc_sel_Enquiry_Source', 'cf3ce91a32d6743ebf497d87b50b81b5ea3a7040'),
    ('proc_sel_Makes_all', '5a6584abc40a696397537d5e39e3bfec7fcb0d21'),
    ('proc_sel_Marketing_Campaigns', '54eb9616f56b966def91df6fac5cd644d9ea5c6b'),
    ('proc_sel_Marketing_Campaigns_History', 'f70c52a7a6f3599f95555178c2731c85ac73eb46'),
    ('proc_sel_NextCUSTOMERID', '1c67c08705aaf3c5c09d4d664f74275fcff2f69c'),
    ('proc_sel_NextTEMPID', '2b1e909d7d67670b42f4ba7ab95886da1c14ec66'),
    ('proc_selp__Option', 'f4f3b5a26d99d9015a52ebf9946266671c35d0fb'),
    ('proc_selp__OptionsUser', '9b3ac3334ca261dd4b49cd99d85f6adf19136f7c'),
    ('proc_selp_Campaign_Claim', '299e7103d89594a1d344ee07f42c1b2cf68e8c76'),
    ('proc_selp_Campaign_Results', '76e359689b786735e19ec9f070d8f88e8d5be4eb'),
    ('proc_selp_Marketing_Campaign', '31f2f526ad6b753f649ead24d03ef56319952551'),
    ('proc_selp_Results_Counters', 'd10fc346c1abb6e6f1b5deb29ffd3600c3f997ae'),
    ('proc_selp_Send_Journal', '949dad84d3838457caadf82e01e99a690255f39d'),
    ('proc_selp_Send_Journal_Doubt', '2c0e0df2cd678278c048b485e7a1c7311128a677'),
    ('proc_updp_Campaign_Claim_Seen', 'c72d6e1099232f03078dd60fbc237d565c858931'),
    ('proc_updp_Marketing_Campaign', '54cdd1e30852763dbeab57311aef17d356c3a256'),
    ('proc_updp_Marketing_Campaign_Details', 'e6378cd96a1f903290a1ea59a85c0822f2cfa814'),
    ('proc_updp_Marketing_ToggleCheckbox', '77f93cf9680103f5d261bfc6436dd543cf37c00e'),
    ('proc_updp_Send_Journal', 'fdd523acb2fd2f1be6abe929850209689abdf637')
)
WHERE (SELECT Procedures_Version FROM _Version) = 2;

ALTER TABLE _Version RENAME COLUMN Procedures_Version TO File_Number;
ALTER TABLE _Version ADD COLUMN Objects_Fingerprint nvarchar(40);
