// Reads the batches of a script for SQL Server as T-SQL and says which ones are no such thing. The parser takes minutes
// for the selections, so what was read once is remembered by its fingerprint in CHECKED and not read again.
//
//   node check_syntax.mjs SCRIPT CHECKED [--record]     --record: write CHECKED anew

import { createHash } from 'node:crypto';
import { readFileSync, writeFileSync } from 'node:fs';
import { importer } from '@dbml/core';

const [script, checked] = process.argv.slice(2);
const known = new Set(readFileSync(checked, 'utf8').split('\n'));
const batches = new Set(readFileSync(script, 'utf8').split(/^GO$/m).map((batch) => batch.trim()).filter(Boolean));
const fingerprint = (batch) => createHash('sha1').update(batch).digest('hex');

const read = [];
let broken = 0;
for (const batch of batches) {
  try {
    // The parser does not know the function UPDATE() of triggers.
    if (!known.has(fingerprint(batch))) importer.import(batch.replace(/NOT UPDATE\(\w+\)/g, '1 = 1'), 'mssql');
    read.push(fingerprint(batch));
  } catch (error) {
    const problems = (error.diags ?? [error]).map((one) => `${one.location?.start?.line ?? '?'}: ${one.message.slice(0, 200)}`);
    console.log(`${batch}\n-- ${problems.join('\n-- ')}\n`);
    ++broken;
  }
}
if (process.argv.includes('--record')) writeFileSync(checked, read.sort().join('\n') + '\n');
console.log(`${read.length} passed, ${broken} failed`);
process.exit(broken === 0 ? 0 : 1);
