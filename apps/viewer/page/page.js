// What only the browser can do: files that are chosen or dropped, and clicks, handed to the program.
import { start } from './pelta.mjs';
import viewer from './viewer.mjs';

const element = (id) => document.getElementById(id);

const program = start(viewer);

async function openFiles(files) {
    const { openDocument } = await program;
    let isReplacing = true;
    for (const file of files) {
        openDocument(file.name, new Uint8Array(await file.arrayBuffer()), isReplacing);
        isReplacing = false;
    }
}

element('open').addEventListener('click', () => element('files').click());
element('files').addEventListener('change', async ({ target }) => {
    await openFiles([...target.files]);
    target.value = ''; // So that the same file can be chosen again.
});
element('show-all').addEventListener('click', async () => (await program).showAll());
document.querySelectorAll('[data-switch]').forEach((input) => {
    input.addEventListener(input.type === 'range' ? 'input' : 'change', async () => {
        const value = input.type === 'checkbox' ? Number(input.checked) : Number(input.value);
        (await program).setSwitch(input.dataset.switch, value);
    });
});
element('banner-close').addEventListener('click', async () => (await program).hideBanner());

const setDropping = (isDropping) => document.body.classList.toggle('dropping', isDropping);
const carriesFiles = ({ dataTransfer }) => dataTransfer?.types.includes('Files');

addEventListener('dragover', (event) => {
    if (carriesFiles(event)) {
        event.preventDefault();
        setDropping(true);
    }
});
addEventListener('dragleave', ({ relatedTarget }) => relatedTarget ?? setDropping(false));
addEventListener('drop', (event) => {
    if (carriesFiles(event)) {
        event.preventDefault();
        setDropping(false);
        openFiles([...event.dataTransfer.files]);
    }
});
