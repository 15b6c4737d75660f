-- The role has only the rights that a login of the program needs. On each table these are the statements that the
-- program itself sends. It also has the right to every procedure.
IF DATABASE_PRINCIPAL_ID(N'Marketing_Program') IS NULL EXEC (N'CREATE ROLE Marketing_Program')
GRANT SELECT ON [Campaign Results] TO Marketing_Program
GRANT UPDATE ON [Campaign Results] TO Marketing_Program
GRANT DELETE ON [Campaign Results] TO Marketing_Program
GRANT SELECT ON Campaign_Results_Grid TO Marketing_Program
GRANT SELECT ON Send_Journal TO Marketing_Program
GRANT SELECT ON Letters TO Marketing_Program
GRANT INSERT ON Letters TO Marketing_Program
GRANT DELETE ON Letters TO Marketing_Program
GRANT SELECT ON Customers TO Marketing_Program
GRANT SELECT ON Vehicles TO Marketing_Program
GRANT SELECT ON Services TO Marketing_Program
GRANT SELECT ON _Log TO Marketing_Program
GRANT SELECT ON _Options TO Marketing_Program
GRANT UPDATE ON _Options TO Marketing_Program
