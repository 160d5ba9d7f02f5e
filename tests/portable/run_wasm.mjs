// Runs a WebAssembly program with the files of this machine: node run_wasm.mjs PROGRAM [ARGUMENT...]
import { readFile } from 'node:fs/promises';
import { WASI } from 'node:wasi';

const [program, ...parameters] = process.argv.slice(2);
const system = new WASI({
    version: 'preview1',
    args: [program, ...parameters],
    preopens: { '.': process.cwd() },
});
const module = await WebAssembly.compile(await readFile(program));
const instance = await WebAssembly.instantiate(module, { wasi_snapshot_preview1: system.wasiImport });
process.exitCode = system.start(instance);
