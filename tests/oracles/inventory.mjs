// Runs `pagescan inventory` over many files at once.
import { execFileSync } from 'node:child_process';

// One array of references for each file, in the order of the files.
export function inventories(tool, files, options) {
  const output = execFileSync(tool,
    ['inventory', '--format', 'jsonl', '--jobs', '2', '--files-from', '-', ...options],
    { input: files.join('\n') + '\n', maxBuffer: 2 ** 32, encoding: 'latin1' });
  const byFile = new Map(files.map((file) => [file, []]));
  for (const line of output.split('\n')) {
    if (!line) continue;
    const reference = JSON.parse(Buffer.from(line, 'latin1').toString('utf8'));
    byFile.get(reference.file).push(reference);
  }
  return files.map((file) => byFile.get(file));
}
